#include "Catalogue.h"

#include "globals/DataFileReader.h"
#include "globals/StateHandler.h"

#include <QCoreApplication>
#include <QStringList>

#include <stdexcept>

using namespace TEKLUVA;

namespace {

constexpr int FIELDS = 4;

void addArticles(const QString& group, const QStringList& lines, const QString& text, QVector<Article>& found)
{
    for (const QString& line : lines) {
        const QStringList fields = line.split(QLatin1Char(';'));
        if (fields.size() == FIELDS && fields[0].contains(text, Qt::CaseInsensitive))
            found.append(
                {group, fields[0], fields[1].toDouble(), fields[2].toDouble(), fields[3].toDouble()});
    }
}

/// The lines of an entry below its first one; throws when that is not what every entry begins with.
QStringList linesOf(const ArchivedFile& entry)
{
    QStringList lines = QString::fromUtf8(entry.content().value_or(QByteArray())).split(QLatin1Char('\n'));
    if (lines.takeFirst() != QLatin1String("catalogue"))
        throw std::runtime_error("\"" + entry.name + "\" is damaged, or the password is wrong.");
    return lines;
}

ProgressStep* addStep(std::size_t entries)
{
    auto* states = StateHandler::getInstance();
    const QString name = QStringLiteral("search");
    states->addProgressStep(name, ProgressStep::E_PRT_PERCENT,
                            QCoreApplication::translate("Viewer", "Search"), QString(), false,
                            ProgressStep::E_PS_WAITING);
    ProgressStep* step = states->getStepData(name);
    step->setAutoPercent(true);
    step->setProgressBarSteps(static_cast<unsigned int>(entries));
    step->setProgressStepState(ProgressStep::E_PS_RUNNING);
    return step;
}

} // namespace

QVector<Article> findArticles(const QString& path, const QString& password, const QString& text)
{
    const DataFileReader reader(path, password);
    ProgressStep* step = addStep(reader.getListOfArchivedFiles().size());
    QVector<Article> found;
    const bool isRead = reader.visitArchivedFiles([&](const ArchivedFile& entry) {
        addArticles(QString::fromStdString(entry.name), linesOf(entry), text, found);
        step->incrementCurrentProgressBarStep();
        return !StateHandler::getInstance()->wasAborted();
    });
    if (!isRead)
        throw std::runtime_error(reader.lastError().toStdString());
    return found;
}
