#include "globals/LastRun.h"

#include "globals/SettingsKeys.h"

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
};

/// In the order in which a stored word is compared with them.
constexpr StateRow STATES[] = {
    {E_RS_INITIALIZING, "initializing", 300, E_RV_CRASHED, "running, or crashed, while it was initializing"},
    {E_RS_STARTED, "started", 400, E_RV_CRASHED, "running, or crashed, while it was started"},
    {E_RS_CLOSING, "closing", 500, E_RV_CRASHED, "running, or crashed, while it was closing"},
    {E_RS_CRASHING, "crashing", 600, E_RV_CRASHED, "running, or crashed, while it was crashing"},
    {E_RS_CRASHED, "crashed", 0, E_RV_CRASHED, "crashed"},
    {E_RS_UPDATING, "updating", 0, E_RV_UPDATING, "was updating"},
    {E_RS_SHUTDOWN, "shutdown", 0, E_RV_CLOSED, "closed cleanly"},
    // Recorded by removing the key.
    {E_RS_FIRST_START, "firststart", 0, E_RV_NO_RUN, "no run is recorded"},
    {E_RS_RESTART, "restart", 0, E_RV_RESTARTED, "restarting"},
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

unsigned int potentialErrorOf(E_RuntimeState state)
{
    const StateRow* row = rowOf(state);
    return row ? row->potentialError : 0;
}

} // namespace TEKLUVA
