#include "commands/Command.h"
#include "support/ApplicationFolders.h"
#include "support/ExitCode.h"
#include "support/Output.h"

#include "globals/LastRun.h"
#include "globals/Settings.h"
#include "globals/SettingsKeys.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonObject>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

struct Record
{
    QString file;
    LastRun run;
    QString verdict;
};

Record recordIn(const QString& file)
{
    const Settings settings(file, QSettings::IniFormat, QCoreApplication::instance());
    // All keys in one call: the application may be writing the next record.
    const QVariantMap record = settings.getSettings(SettingsKeys::APPLICATION);
    return {file, lastRunFrom(record), runVerdictText(record)};
}

QString lastAlive(const LastRun& run)
{
    if (!run.lifeTime.isValid())
        return QStringLiteral("never");
    const QString clock = run.isServerTime ? QStringLiteral("server") : QStringLiteral("local");
    return QStringLiteral("%1 by the %2 clock").arg(run.lifeTime.toString(Qt::ISODate), clock);
}

QList<QStringList> rowsOf(const Record& record)
{
    const LastRun& run = record.run;
    return {
        {QStringLiteral("File:"), record.file},
        {QStringLiteral("Verdict:"), record.verdict},
        {QStringLiteral("State:"), run.word.isEmpty() ? QStringLiteral("-") : run.word},
        {QStringLiteral("Potential error:"), QString::number(run.potentialError)},
        {QStringLiteral("Last alive:"), lastAlive(run)},
        {QStringLiteral("Auto-save session:"),
         run.isAutoSaveSession ? QStringLiteral("active") : QStringLiteral("none")},
    };
}

QJsonObject objectOf(const Record& record)
{
    const LastRun& run = record.run;
    return {{QStringLiteral("file"), record.file},
            {QStringLiteral("exists"), QFileInfo::exists(record.file)},
            {QStringLiteral("state"), run.state},
            {QStringLiteral("word"), run.word},
            {QStringLiteral("verdict"), record.verdict},
            {QStringLiteral("potentialError"), static_cast<qint64>(run.potentialError)},
            {QStringLiteral("lastAlive"),
             run.lifeTime.isValid() ? QJsonValue(run.lifeTime.toString(Qt::ISODate)) : QJsonValue()},
            {QStringLiteral("serverTime"), run.isServerTime},
            {QStringLiteral("autoSaveSession"), run.isAutoSaveSession}};
}

} // namespace

int showState(const QCommandLineParser& line)
{
    const Record record = recordIn(settingsFileOf(line));
    if (line.isSet(QStringLiteral("json")))
        printAnswer(objectOf(record));
    else
        printTable(rowsOf(record));
    return Done;
}

} // namespace globalsctl
