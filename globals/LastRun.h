#pragma once

#include "globals/globals.h"

#include <QDateTime>
#include <QString>
#include <QVariant>

namespace TEKLUVA {

/// What a recorded state says of how its run ended.
enum E_RunVerdict : int {
    E_RV_NO_RUN = 1,    ///< no run is recorded
    E_RV_CLOSED = 2,    ///< a clean end
    E_RV_RESTARTED = 3, ///< a clean end, to start again
    E_RV_UPDATING = 4,  ///< an update had begun and did not end
    E_RV_CRASHED = 5,   ///< a failure, or a run that recorded no end: killed, or running still
    E_RV_RUNNING = 6,   ///< no end is recorded, and the process that recorded the run exists
};

/// What the settings say about how the last run went. State, error code and life time are one record, written
/// in one piece.
struct LastRun
{
    /// E_RS_FIRST_START when no run has been recorded.
    E_RuntimeState state = E_RS_FIRST_START;
    /// The state's word as it stands in the settings file; empty for a first start.
    QString word;
    /// The potential error code, 0 for none.
    unsigned int potentialError = 0;
    /// When the application was last known to be alive; invalid when never.
    QDateTime lifeTime;
    /// Whether lifeTime is by the server's clock.
    bool isServerTime = false;
    /// Whether an auto-save session is active.
    bool isAutoSaveSession = false;
};

/// Reads the record from the values of the settings group "Application". Reentrant.
///
/// The word is compared ignoring case. An unknown word reads as E_RS_CRASHED: something went wrong that this
/// version does not know, and a clean exit must not be assumed.
GLOBALS_EXPORT LastRun lastRunFrom(const QVariantMap& applicationSettings);

/// The word that stands for \p state in the settings file, "firststart" for E_RS_FIRST_START; empty for a
/// number that is no state.
GLOBALS_EXPORT QString runtimeStateWord(E_RuntimeState state);

/// The verdict on a run that left \p state; E_RV_CRASHED for a number that is no state, as a clean end must
/// not be assumed.
///
/// A state that does not end a run stays in the settings while the application runs and after it has died.
/// Only the application itself, at its start, can know that no other process of it is running.
GLOBALS_EXPORT E_RunVerdict runVerdict(E_RuntimeState state);

/// The same in words, in English: "closed cleanly". They name the step at which a run died, if it did:
/// "running, or crashed, while it was closing". Empty for a number that is no state.
GLOBALS_EXPORT QString runVerdictText(E_RuntimeState state);

/// \name By the process that recorded the run
/// From the values of the settings group "Application", as lastRunFrom(). If the record names its process,
/// the verdict on a run without an end is certain: E_RV_RUNNING while the process exists, otherwise
/// E_RV_CRASHED, "crashed while it was started". A record of an older version of the library, or of another
/// machine that shares the file, has the verdict of its state.
/// @{
GLOBALS_EXPORT E_RunVerdict runVerdict(const QVariantMap& applicationSettings);
GLOBALS_EXPORT QString runVerdictText(const QVariantMap& applicationSettings);
/// @}

/// The error code that is recorded with \p state: what has gone wrong if nothing else is recorded later.
GLOBALS_EXPORT unsigned int potentialErrorOf(E_RuntimeState state);

} // namespace TEKLUVA
