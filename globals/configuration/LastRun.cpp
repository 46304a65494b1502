#include "globals/configuration/LastRun_p.h"

#include "globals/SettingsKeys.h"
#include "globals/system/Process_p.h"

#include <algorithm>

namespace TEKLUVA {

namespace {

struct StateRow
{
    E_RuntimeState state;
    const char* word;
    unsigned int potentialError;
    E_RunVerdict verdict;
    const char* verdictText;
    bool goesOn; ///< as long as the process exists
};

/// In the order in which a stored word is compared with them.
constexpr StateRow STATES[] = {
    {E_RS_INITIALIZING, "initializing", 300, E_RV_CRASHED, "running, or crashed, while it was initializing",
     true},
    {E_RS_STARTED, "started", 400, E_RV_CRASHED, "running, or crashed, while it was started", true},
    {E_RS_CLOSING, "closing", 500, E_RV_CRASHED, "running, or crashed, while it was closing", true},
    {E_RS_CRASHING, "crashing", 600, E_RV_CRASHED, "running, or crashed, while it was crashing", true},
    {E_RS_CRASHED, "crashed", 0, E_RV_CRASHED, "crashed", false},
    {E_RS_UPDATING, "updating", 0, E_RV_UPDATING, "was updating", true},
    {E_RS_SHUTDOWN, "shutdown", 0, E_RV_CLOSED, "closed cleanly", false},
    // Recorded by removing the key.
    {E_RS_FIRST_START, "firststart", 0, E_RV_NO_RUN, "no run is recorded", false},
    {E_RS_RESTART, "restart", 0, E_RV_RESTARTED, "restarting", false},
};

const StateRow* rowOf(E_RuntimeState state)
{
    const auto* row = std::find_if(std::begin(STATES), std::end(STATES),
                                   [state](const StateRow& candidate) { return candidate.state == state; });
    return row == std::end(STATES) ? nullptr : row;
}

E_RuntimeState stateOf(const QString& word)
{
    for (const StateRow& row : STATES) {
        if (word.compare(QLatin1String(row.word), Qt::CaseInsensitive) == 0)
            return row.state;
    }
    return E_RS_CRASHED;
}

System::Process processOf(const QVariantMap& record)
{
    return {record.value(SettingsKeys::PROCESS).toLongLong(),
            record.value(SettingsKeys::PROCESS_START).toLongLong(),
            record.value(SettingsKeys::BOOT).toString()};
}

/// What is known of the process that has recorded a run.
enum class Recorder {
    Unknown, ///< of another boot or machine, or not recorded
    Running,
    Gone,
};

Recorder recorderOf(const QVariantMap& record)
{
    const System::Process process = processOf(record);
    if (process.id == 0 || process.boot.isEmpty() || process.boot != System::thisBoot())
        return Recorder::Unknown;
    return System::isRunning(process) ? Recorder::Running : Recorder::Gone;
}

/// Null unless \p record is of a run without an end.
const StateRow* openRowOf(const QVariantMap& record)
{
    const StateRow* row = rowOf(lastRunFrom(record).state);
    return row && row->goesOn ? row : nullptr;
}

} // namespace

LastRun lastRunFrom(const QVariantMap& applicationSettings)
{
    const auto value = [&applicationSettings](QLatin1String key) { return applicationSettings.value(key); };
    LastRun run;
    run.word = value(SettingsKeys::STATE).toString();
    run.state = value(SettingsKeys::STATE).isValid() ? stateOf(run.word) : E_RS_FIRST_START;
    run.potentialError = value(SettingsKeys::ERROR_CODE).toUInt();
    run.lifeTime = value(SettingsKeys::LIFE_TIME).toDateTime();
    run.isServerTime = value(SettingsKeys::TIME_SYNC).toBool();
    run.isAutoSaveSession = value(SettingsKeys::AUTO_SAVE).toBool();
    return run;
}

QString runtimeStateWord(E_RuntimeState state)
{
    const StateRow* row = rowOf(state);
    return row ? QString::fromLatin1(row->word) : QString();
}

E_RunVerdict runVerdict(E_RuntimeState state)
{
    const StateRow* row = rowOf(state);
    return row ? row->verdict : E_RV_CRASHED;
}

QString runVerdictText(E_RuntimeState state)
{
    const StateRow* row = rowOf(state);
    return row ? QString::fromLatin1(row->verdictText) : QString();
}

E_RunVerdict runVerdict(const QVariantMap& applicationSettings)
{
    if (openRowOf(applicationSettings) && recorderOf(applicationSettings) == Recorder::Running)
        return E_RV_RUNNING;
    return runVerdict(lastRunFrom(applicationSettings).state);
}

QString runVerdictText(const QVariantMap& applicationSettings)
{
    const StateRow* row = openRowOf(applicationSettings);
    const Recorder recorder = row ? recorderOf(applicationSettings) : Recorder::Unknown;
    if (recorder == Recorder::Running)
        return QStringLiteral("running");
    if (recorder == Recorder::Gone && row->verdict == E_RV_CRASHED)
        return QStringLiteral("crashed while it was %1").arg(QLatin1String(row->word));
    return runVerdictText(lastRunFrom(applicationSettings).state);
}

QVariantMap processRecord(E_RuntimeState state)
{
    const StateRow* row = rowOf(state);
    if (!row || !row->goesOn)
        return {{SettingsKeys::PROCESS, {}}, {SettingsKeys::PROCESS_START, {}}, {SettingsKeys::BOOT, {}}};
    const System::Process process = System::thisProcess();
    return {{SettingsKeys::PROCESS, process.id},
            {SettingsKeys::PROCESS_START, process.start},
            {SettingsKeys::BOOT, process.boot}};
}

bool isRunOfOther(const QVariantMap& applicationSettings)
{
    return runVerdict(applicationSettings) == E_RV_RUNNING
           && processOf(applicationSettings).id != System::thisProcess().id;
}

unsigned int potentialErrorOf(E_RuntimeState state)
{
    const StateRow* row = rowOf(state);
    return row ? row->potentialError : 0;
}

} // namespace TEKLUVA
