#pragma once

#include "globals/ProgressStep.h"
#include "globals/globals_export.h"

#include <QMetaType>
#include <QString>
#include <QVector>

namespace TEKLUVA {

/// How a process ended.
enum E_ProcessResult : int {
    E_PR_DONE = 0,
    E_PR_ABORTED = 1, ///< because the user asked for it
    E_PR_FAILED = 2,
};

/// What a display shows of a step, at one moment.
struct ProgressStepSnapshot
{
    unsigned int id = 0;
    QString name;
    QString label;
    QString description;
    QString displayText;
    ProgressStep::E_ProgressType type = ProgressStep::E_PRT_BAR;
    ProgressStep::E_ProgressState state = ProgressStep::E_PS_CREATED;
    unsigned int barSteps = 0;
    unsigned int currentBarStep = 0; ///< not more than barSteps
    unsigned int percent = 0;        ///< as ProgressStep::getProgressStepProgress()
    bool isVisible = true;
};

/// What a display shows of a process, at one moment: values only, so that a display in any thread may keep
/// it.
struct ProgressSnapshot
{
    QString processName;
    unsigned int totalPercent = 0; ///< as StateHandler::totalProgress()
    bool showsTotal = false;
    bool showsAbort = false;             ///< the display has an abort button
    bool isAborted = false;              ///< the user has asked for an end
    bool isRunning = false;              ///< false in the last one of a process
    QString activeStep;                  ///< its name, empty for none
    QVector<ProgressStepSnapshot> steps; ///< in the order in which a display shows them
};

/// What a display shows of \p step now.
[[nodiscard]] GLOBALS_EXPORT ProgressStepSnapshot snapshotOf(const ProgressStep& step);
/// How much of the step is done, from 0 to 1: by its bar, or by its percentage where that is more.
[[nodiscard]] GLOBALS_EXPORT double fractionDone(const ProgressStepSnapshot& step);

} // namespace TEKLUVA

Q_DECLARE_METATYPE(TEKLUVA::E_ProcessResult)
Q_DECLARE_METATYPE(TEKLUVA::ProgressSnapshot)
