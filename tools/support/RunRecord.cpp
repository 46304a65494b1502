#include "support/RunRecord.h"

#include "support/SettingsFile.h"

#include "globals/LastRun.h"
#include "globals/Settings.h"
#include "globals/SettingsKeys.h"

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
    E_RunVerdict verdict = E_RV_NO_RUN;
    QString words; ///< of the verdict
};

struct MeaningRow
{
    E_RunVerdict verdict;
    const char* meaning;
};

constexpr MeaningRow MEANINGS[] = {
    {E_RV_NO_RUN, "the application has not been started with these settings, or they were removed"},
    {E_RV_CLOSED, "the last run ended as it should"},
    {E_RV_RESTARTED, "the last run ended to start again"},
    {E_RV_UPDATING, "an update had begun, and no end of it is recorded"},
    {E_RV_CRASHED, "no clean end is recorded: the run failed or was killed, unless it goes on"},
    {E_RV_RUNNING, "the process that recorded the run exists"},
};

QString meaningOf(E_RunVerdict verdict)
{
    for (const MeaningRow& row : MEANINGS) {
        if (row.verdict == verdict)
            return QString::fromLatin1(row.meaning);
    }
    return {};
}

/// What an error code that is recorded says.
QString meaningOfError(unsigned int code)
{
    if (code == 0)
        return QStringLiteral("none");
    for (int state = E_RS_INITIALIZING; state <= E_RS_RESTART; ++state) {
        if (potentialErrorOf(E_RuntimeState(state)) == code)
            return QStringLiteral("it was %1 and recorded nothing later")
                .arg(runtimeStateWord(E_RuntimeState(state)));
    }
    return QStringLiteral("a code of the application's own");
}

Record recordIn(const QString& file)
{
    const Settings settings(file, QSettings::IniFormat, QCoreApplication::instance());
    // All keys in one call: the application may be writing the next record.
    const QVariantMap record = settings.getSettings(SettingsKeys::APPLICATION);
    requireRead(settings, file);
    return {file, lastRunFrom(record), runVerdict(record), runVerdictText(record)};
}

QString lastAlive(const LastRun& run)
{
    if (!run.lifeTime.isValid())
        return QStringLiteral("never");
    const QString clock = run.isServerTime ? QStringLiteral("server") : QStringLiteral("local");
    return QStringLiteral("%1 by the %2 clock").arg(run.lifeTime.toString(Qt::ISODate), clock);
}

} // namespace

QList<QStringList> rowsOfLastRun(const QString& settingsFile)
{
    const Record record = recordIn(settingsFile);
    const LastRun& run = record.run;
    return {
        {QStringLiteral("File:"), record.file},
        {QStringLiteral("Verdict:"), record.words},
        {QStringLiteral("Meaning:"), meaningOf(record.verdict)},
        {QStringLiteral("State:"), run.word.isEmpty() ? QStringLiteral("-") : run.word},
        {QStringLiteral("Potential error:"),
         QStringLiteral("%1: %2").arg(run.potentialError).arg(meaningOfError(run.potentialError))},
        {QStringLiteral("Last alive:"), lastAlive(run)},
        {QStringLiteral("Auto-save session:"),
         run.isAutoSaveSession ? QStringLiteral("active") : QStringLiteral("none")},
    };
}

QJsonObject objectOfLastRun(const QString& settingsFile)
{
    const Record record = recordIn(settingsFile);
    const LastRun& run = record.run;
    return {{QStringLiteral("file"), record.file},
            {QStringLiteral("exists"), QFileInfo::exists(record.file)},
            {QStringLiteral("state"), run.state},
            {QStringLiteral("word"), run.word},
            {QStringLiteral("verdict"), record.words},
            {QStringLiteral("meaning"), meaningOf(record.verdict)},
            {QStringLiteral("errorMeaning"), meaningOfError(run.potentialError)},
            {QStringLiteral("potentialError"), static_cast<qint64>(run.potentialError)},
            {QStringLiteral("lastAlive"),
             run.lifeTime.isValid() ? QJsonValue(run.lifeTime.toString(Qt::ISODate)) : QJsonValue()},
            {QStringLiteral("serverTime"), run.isServerTime},
            {QStringLiteral("autoSaveSession"), run.isAutoSaveSession}};
}

} // namespace globalsctl
