#include "globals/ProgressSnapshot.h"

#include <algorithm>

namespace TEKLUVA {

ProgressStepSnapshot snapshotOf(const ProgressStep& step)
{
    ProgressStepSnapshot snapshot;
    snapshot.id = step.getProgressStepId();
    snapshot.name = step.getProgressStepName();
    snapshot.label = step.getProgressStepLabel();
    snapshot.state =
        step.getProgressStepState(); // first of what changes: a finished step is seen with all it ends with
    snapshot.type = step.getProgressStepType();
    snapshot.description = step.getProgressStepDescription();
    snapshot.displayText = step.getProgressStepDisplayText();
    snapshot.barSteps = step.getProgressBarSteps();
    snapshot.currentBarStep = std::min(step.getCurrentProgressBarStep(), snapshot.barSteps);
    snapshot.percent = step.getProgressStepProgress();
    snapshot.isVisible = step.getVisible();
    return snapshot;
}

double fractionDone(const ProgressStepSnapshot& step)
{
    if (step.state == ProgressStep::E_PS_FINISHED)
        return 1;
    const double bar = step.barSteps == 0 ? 0 : static_cast<double>(step.currentBarStep) / step.barSteps;
    return std::max(bar, step.percent / 100.0);
}

} // namespace TEKLUVA
