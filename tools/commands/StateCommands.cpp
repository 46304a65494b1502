#include "tools/commands/Command.h"
#include "tools/support/ApplicationFolders.h"
#include "tools/support/ExitCode.h"
#include "tools/support/Output.h"

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

struct VerdictRow
{
    E_RuntimeState state;
    const char* verdict;
};

/// A state that does not end a run stays in the file while the application runs and after it has crashed: the
/// file alone cannot tell which.
constexpr VerdictRow VERDICTS[] = {
    {E_RS_INITIALIZING, "running, or crashed, while it was initializing"},
    {E_RS_STARTED, "running, or crashed, while it was started"},
    {E_RS_CLOSING, "running, or crashed, while it was closing"},
    {E_RS_CRASHING, "running, or crashed, while it was crashing"},
    {E_RS_SHUTDOWN, "closed cleanly"},
    {E_RS_CRASHED, "crashed"},
    {E_RS_UPDATING, "was updating"},
    {E_RS_FIRST_START, "no run is recorded"},
    {E_RS_RESTART, "restarting"},
};

constexpr bool standInOrder()
{
    int expected = 0;
    for (const VerdictRow& row : VERDICTS) {
        if (row.state != ++expected)
            return false;
    }
    return expected == E_RS_RESTART;
}
static_assert(standInOrder(), "one row per state, so that a state is an index");

struct Record
{
    QString file;
    LastRun run;

    QString verdict() const { return QString::fromLatin1(VERDICTS[run.state - 1].verdict); }
};

Record recordIn(const QString& file)
{
    const Settings settings(file, QSettings::IniFormat, QCoreApplication::instance());
    // Read at one moment: the application may be writing the next record.
    return {file, lastRunFrom(settings.getSettings(SettingsKeys::APPLICATION))};
}

QString lastAlive(const LastRun& run)
{
    if (!run.lifeTime.isValid())
        return QStringLiteral("never");
    const QString clock = run.isServerTime ? QStringLiteral("server") : QStringLiteral("local");
    return QStringLiteral("%1 by the %2 clock").arg(run.lifeTime.toString(Qt::ISODate), clock);
}

QString tableOf(const Record& record)
{
    const LastRun& run = record.run;
    return aligned({
        {QStringLiteral("File:"), record.file},
        {QStringLiteral("Verdict:"), record.verdict()},
        {QStringLiteral("State:"), run.word.isEmpty() ? QStringLiteral("-") : run.word},
        {QStringLiteral("Potential error:"), QString::number(run.potentialError)},
        {QStringLiteral("Last alive:"), lastAlive(run)},
        {QStringLiteral("Auto-save session:"),
         run.isAutoSaveSession ? QStringLiteral("active") : QStringLiteral("none")},
    });
}

QJsonObject objectOf(const Record& record)
{
    const LastRun& run = record.run;
    return {{QStringLiteral("file"), record.file},
            {QStringLiteral("exists"), QFileInfo::exists(record.file)},
            {QStringLiteral("state"), run.state},
            {QStringLiteral("word"), run.word},
            {QStringLiteral("verdict"), record.verdict()},
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
        answer(objectOf(record));
    else
        answer(tableOf(record));
    return Done;
}

} // namespace globalsctl
