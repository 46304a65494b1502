// Prints a page with its tables filled in: each comment "<!-- table of NAME -->" gets the table that the
// library itself describes, in place of any that follows it. Doxygen reads the longer pages through this
// program.

#include "support/PresetTypes.h"

#include "globals/LastRun.h"
#include "globals/MeasurementManager.h"
#include "globals/PathRegistry.h"
#include "globals/PresetManager.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QRegularExpression>

#include <cstdio>
#include <cstdlib>

using namespace TEKLUVA;

namespace {

QString contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

/// The names of the enumerators that start with \p prefix, by their numbers.
QMap<int, QString> enumerators(const char* header, const char* prefix)
{
    const QRegularExpression line(QStringLiteral("\\b(%1\\w+) = (\\d+)").arg(QLatin1String(prefix)));
    QRegularExpressionMatchIterator match =
        line.globalMatch(contentOf(QStringLiteral(HEADERS "/") + QLatin1String(header)));
    QMap<int, QString> names;
    while (match.hasNext()) {
        const QRegularExpressionMatch found = match.next();
        names.insert(found.captured(2).toInt(), found.captured(1));
    }
    return names;
}

QString code(const QString& text)
{
    return text.isEmpty() ? QString() : QLatin1Char('`') + text + QLatin1Char('`');
}

QString row(const QStringList& cells)
{
    return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
}

/// With words for the folders that differ from machine to machine.
QString general(QString path)
{
    const std::pair<QString, QString> words[] = {
        {QDir::homePath(), QStringLiteral("~")},
        {QCoreApplication::applicationDirPath(), QStringLiteral("<program>")},
        {QDir::currentPath(), QStringLiteral("<working>")}};
    for (const auto& [folder, word] : words) {
        if (path.startsWith(folder + QLatin1Char('/')))
            return word + path.mid(folder.size());
    }
    return path;
}

QString tableOfPaths()
{
    const QMap<int, QString> names = enumerators("globals.h", "E_PT_");
    QString table =
        QStringLiteral("| Number | Type | What for | Rule | With the usual names | Key of the user |\n"
                       "|---|---|---|---|---|---|\n");
    for (const PathDescription& path : describePaths()) {
        table += row({QString::number(path.type), code(names.value(path.type)), path.role, path.rule,
                      code(general(path.path)), code(path.overrideKey)});
    }
    return table;
}

QString tableOfUnits()
{
    const MeasurementManager* manager = MeasurementManager::getInstance();
    const QMap<int, QString> names = enumerators("globals.h", "E_MU_");
    QString table =
        QStringLiteral("| Number | Unit | Length | Area | Volume | Decimals of a length | Its step |\n"
                       "|---|---|---|---|---|---|---|\n");
    for (const E_MeasurementUnit unit : MeasurementManager::getMeasurementUnits()) {
        table += row({QString::number(unit), code(names.value(unit)),
                      manager->getLinearMeasurementUnitAbbrevation(unit),
                      manager->getSquaredMeasurementUnitAbbrevation(unit),
                      manager->getCubicMeasurementUnitAbbrevation(unit),
                      QString::number(manager->getLinearMeasurementUnitPrecision(unit)),
                      QString::number(manager->getLinearMeasurementUnitStep(unit))});
    }
    return table;
}

QString tableOfPresets()
{
    PresetManager::getInstance()->fillNameMap();
    PresetManager::getInstance()->setInitialPresets();
    const QMap<int, QString> names = enumerators("PresetValue.h", "E_PV_");
    QString table =
        QStringLiteral("| Number | Value | Key | Type | Default | Bounds |\n|---|---|---|---|---|---|\n");
    for (const PresetDescription& preset : PresetManager::describePresets()) {
        const QJsonValue initial =
            globalsctl::presetType(preset.type).normal(PresetManager::getPreset(preset.value));
        table += row({QString::number(preset.value), code(names.value(preset.value)), code(preset.key),
                      preset.type, globalsctl::inWords(initial), preset.bounds});
    }
    return table;
}

QString tableOfRuntimeStates()
{
    const QMap<int, QString> states = enumerators("globals.h", "E_RS_");
    const QMap<int, QString> verdicts = enumerators("LastRun.h", "E_RV_");
    QString table =
        QStringLiteral("| State found | Word | Error code | Verdict | In words |\n|---|---|---|---|---|\n");
    for (auto name = states.begin(); name != states.end(); ++name) {
        const auto state = E_RuntimeState(name.key());
        table += row({code(*name), code(runtimeStateWord(state)), QString::number(potentialErrorOf(state)),
                      code(verdicts.value(runVerdict(state))), runVerdictText(state)});
    }
    return table;
}

struct Table
{
    const char* name;
    QString (*text)();
};

constexpr Table TABLES[] = {
    {"paths", &tableOfPaths},
    {"presets", &tableOfPresets},
    {"runtime states", &tableOfRuntimeStates},
    {"units", &tableOfUnits},
};

QString filled(QString page)
{
    for (const Table& table : TABLES) {
        const QString place = QStringLiteral("<!-- table of %1 -->\n").arg(QLatin1String(table.name));
        const QRegularExpression old(place + QStringLiteral("(\\|.*\n)*"));
        if (page.contains(place))
            page.replace(old, place + table.text());
    }
    return page;
}

/// The same folders on each machine. Nothing is made in them.
void useFoldersOfNobody()
{
    qputenv("HOME", "/home/anna");
    for (const char* variable : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
        qunsetenv(variable);
    QCoreApplication::setOrganizationName(QStringLiteral("tekluva"));
    QCoreApplication::setApplicationName(QStringLiteral("tekluva 3D-Planner"));
}

} // namespace

int main(int argc, char** argv)
{
    useFoldersOfNobody();
    const QCoreApplication application(argc, argv);
    const QStringList pages = QCoreApplication::arguments().mid(1);
    if (pages.size() != 1)
        return EXIT_FAILURE;
    const QByteArray page = filled(contentOf(pages.first())).toUtf8();
    std::fwrite(page.constData(), 1, static_cast<std::size_t>(page.size()), stdout);
    return EXIT_SUCCESS;
}
