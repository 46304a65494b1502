#include "support/Report.h"

#include "support/ApplicationFolders.h"
#include "support/Failure.h"
#include "support/KnownSettings.h"
#include "support/PathList.h"
#include "support/PresetTable.h"
#include "support/RunRecord.h"
#include "support/SettingsFile.h"
#include "support/Suggestion.h"
#include "support/Table.h"

#include "globals/Exception.h"
#include "globals/PathRegistry.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSysInfo>

#include <algorithm>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

constexpr qint64 LARGEST_LOG = 1 << 20; ///< bytes, the last ones of a log
constexpr int MOST_LOGS = 5;            ///< the newest ones

QString stateOf(const QCommandLineParser& line)
{
    return aligned(rowsOfLastRun(settingsFileOf(line)));
}

QString lineOf(const QString& path, const QVariant& value)
{
    // A map shows the names that are in it.
    const bool isSecret =
        namesSecret(path) || (!value.canConvert<QString>() && namesSecret(textOfSetting(value)));
    return lineOfSetting(path, isSecret ? QVariant(QStringLiteral("***")) : value);
}

QString settingsOf(const QCommandLineParser& line)
{
    const QString file = settingsFileOf(line);
    const Settings settings(file, QSettings::IniFormat, nullptr);
    const QVariantMap values = settings.getSettingsBelow(QString());
    requireRead(settings, file);
    QStringList lines = {QStringLiteral("# ") + file};
    for (const int number : settings.damagedLines())
        lines << QStringLiteral("# line %1 is damaged").arg(number);
    for (auto value = values.begin(); value != values.end(); ++value) {
        lines << lineOf(value.key(), *value);
        const QString fault = faultOfSetting(value.key(), *value);
        if (!fault.isEmpty())
            lines << QStringLiteral("# %1 %2").arg(value.key(), fault);
    }
    return lines.join(QLatin1Char('\n'));
}

QString pathsOf(const QCommandLineParser& line)
{
    return aligned(rowsOfPaths(line.value(QStringLiteral("program"))));
}

QString presetsOf(const QCommandLineParser& line)
{
    const QString program = line.value(QStringLiteral("program"));
    const QString folder = program.isEmpty() ? describePaths()[E_PT_APPLICATION - 1].path : program;
    const PresetFile file(QDir(folder).filePath(QStringLiteral("presets.dat")));
    file.readAsApplication();
    const auto changed = presetsAfter(file, PresetChoice::Changed);
    return (file.remarks() << aligned(rowsOf(changed))).join(QLatin1Char('\n'));
}

QString versionsOf(const QCommandLineParser& /*line*/)
{
    return aligned(
        {{QStringLiteral("globalsctl"), QStringLiteral(GLOBALSCTL_VERSION)},
         {QStringLiteral("Qt"), QString::fromLatin1(qVersion())},
         {QStringLiteral("system"), QSysInfo::prettyProductName()},
         {QStringLiteral("kernel"), QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion()},
         {QStringLiteral("processor"), QSysInfo::currentCpuArchitecture()}});
}

struct PartRow
{
    const char* name;
    QString (*text)(const QCommandLineParser& line);
};

/// Besides the logs.
constexpr PartRow PARTS[] = {
    {"state", &stateOf},     {"settings", &settingsOf}, {"paths", &pathsOf},
    {"presets", &presetsOf}, {"versions", &versionsOf},
};
const auto LOGS = QStringLiteral("logs");

/// The text of a part, or why there is none.
QString textOf(const PartRow& part, const QCommandLineParser& line)
{
    try {
        return part.text(line);
    } catch (const Failure& e) {
        return e.reason();
    } catch (const Exception& e) {
        return QString::fromUtf8(e.getDescription());
    }
}

/// The end of the file, from the beginning of a line.
QString endOfLog(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    if (file.size() > LARGEST_LOG) {
        file.seek(file.size() - LARGEST_LOG);
        file.readLine(LARGEST_LOG);
    }
    return QString::fromUtf8(file.read(LARGEST_LOG));
}

QStringList newestLogs()
{
    QStringList paths = logFiles();
    std::stable_sort(paths.begin(), paths.end(), [](const QString& a, const QString& b) {
        return QFileInfo(a).lastModified() > QFileInfo(b).lastModified();
    });
    return paths.mid(0, MOST_LOGS);
}

/// The names of the parts that are to be left out, "state" or "logs/a.log". Throws UsageError for what is
/// none.
QStringList excludedParts(const QCommandLineParser& line)
{
    const QStringList known = reportPartNames();
    QStringList excluded;
    for (const QString& given : line.values(QStringLiteral("exclude"))) {
        // As they are called in the archive, and as shells complete the name of a folder.
        static const QRegularExpression END(QStringLiteral("(\\.txt|/+)$"));
        const QString name = QString(given).remove(END);
        const bool isLog = name.startsWith(LOGS + QLatin1Char('/')) && name.endsWith(QLatin1String(".log"));
        if (!known.contains(name) && !isLog)
            throw UsageError(QStringLiteral("--exclude is \"%1\", not one of %2%3")
                                 .arg(given, known.join(QStringLiteral(", ")), suggestion(name, known)));
        excluded << name;
    }
    return excluded;
}

} // namespace

QStringList reportPartNames()
{
    QStringList names = {LOGS};
    for (const PartRow& part : PARTS)
        names << QString::fromLatin1(part.name);
    return names;
}

ReportParts reportParts(const QCommandLineParser& line)
{
    const QStringList excluded = excludedParts(line);
    useFoldersOf(line);
    ReportParts parts;
    const auto add = [&parts](const QString& name, const QString& text) {
        parts.insert(name, withoutSecrets(text).toUtf8());
    };
    for (const PartRow& part : PARTS) {
        const QString name = QLatin1String(part.name);
        if (!excluded.contains(name))
            add(name + QStringLiteral(".txt"), textOf(part, line) + QLatin1Char('\n'));
    }
    for (const QString& path : excluded.contains(LOGS) ? QStringList() : newestLogs()) {
        const QString name = LOGS + QLatin1Char('/') + QFileInfo(path).fileName();
        if (!excluded.contains(name))
            add(name, endOfLog(path));
    }
    return parts;
}

QString withoutSecrets(QString text)
{
    // A value in quotes ends with its line where the second quote is missing. Possessive, because a match
    // that has to remember each character of a long value fails, and nothing after it would be found.
    const QString value =
        QStringLiteral(R"((?:(?:Basic|Bearer)\s+)?(?:\\*(["'])(?:(?!\2)[^\\\n]|\\.)*+\2?|[^\s"]+))");
    static const QRegularExpression NAMED(QStringLiteral(R"(((?:%1)\w*\\*["']?\s*[=:>]+\s*)%2)")
                                              .arg(wordsForSecrets().join(QLatin1Char('|')), value),
                                          QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression IN_ADDRESS(QStringLiteral("(\\w+://[^/\\s:@]*):[^/\\s]+@"));
    text.replace(NAMED, QStringLiteral("\\1***"));
    return text.replace(IN_ADDRESS, QStringLiteral("\\1:***@"));
}

} // namespace globalsctl
