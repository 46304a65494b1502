#include "support/PresetCheck.h"

#include "support/Failure.h"
#include "support/Output.h"
#include "support/PresetFile.h"

#include "globals/Exception.h"

#include <QJsonObject>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

QString countOf(int number, const char* what)
{
    const QString count = QStringLiteral("%1 %2").arg(number).arg(QLatin1String(what));
    return number == 1 ? count : count + QLatin1Char('s');
}

} // namespace

void PresetCheck::check(const QString& path)
{
    try {
        add(path, PresetFile(path));
    } catch (const Failure& e) {
        addUnreadable(path, e.reason());
    } catch (const Exception& e) {
        addUnreadable(path, QString::fromUtf8(e.getDescription()));
    }
}

void PresetCheck::print() const
{
    for (const QString& result : m_lines)
        printResult(printable(result));
    if (m_files.size() > 1) {
        const QString bad = m_bad == 0 ? QStringLiteral("all good") : QStringLiteral("%1 bad").arg(m_bad);
        printResult(QStringLiteral("%1 files, %2").arg(m_files.size()).arg(bad));
    }
}

void PresetCheck::add(const QString& path, const PresetFile& file)
{
    const bool isBad = file.hasFaults() || (m_isStrict && file.noteCount() > 0);
    m_bad += isBad ? 1 : 0;
    m_lines << file.remarks();
    const QString presets = countOf(file.presetCount(), "preset") + QStringLiteral(" set");
    if (!isBad && file.noteCount() > 0)
        m_lines << QStringLiteral("%1: %2, %3").arg(path, presets, countOf(file.noteCount(), "note"));
    else if (!isBad)
        m_lines << QStringLiteral("%1: good, %2").arg(path, presets);
    m_files << QJsonObject{{QStringLiteral("file"), path},
                           {QStringLiteral("good"), !isBad},
                           {QStringLiteral("presets"), file.presetCount()},
                           {QStringLiteral("remarks"), QJsonArray::fromStringList(file.remarks())}};
}

void PresetCheck::addUnreadable(const QString& path, const QString& reason)
{
    ++m_bad;
    printError(reason);
    m_files << QJsonObject{{QStringLiteral("file"), path},
                           {QStringLiteral("good"), false},
                           {QStringLiteral("presets"), 0},
                           {QStringLiteral("remarks"), QJsonArray{reason}}};
}

} // namespace globalsctl
