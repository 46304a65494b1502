#include "BareStep.h"
#include "Bench.h"

#include "globals/ProgressStep.h"

#include <memory>

using namespace TEKLUVA;

namespace {

auto updateOurs()
{
    auto step = std::make_shared<ProgressStep>(1, QStringLiteral("models"), ProgressStep::E_PRT_BAR,
                                               QString(), QString(), ProgressStep::E_PS_RUNNING);
    auto calls = std::make_shared<unsigned int>(0);
    QObject::connect(step.get(), &ProgressStep::updateProgressStepRequested, [calls] { ++*calls; });
    return [step, calls] {
        step->setCurrentProgressBarStep(*calls + 1);
        return *calls;
    };
}

auto updateBare()
{
    auto step = std::make_shared<BareStep>();
    auto calls = std::make_shared<unsigned int>(0);
    QObject::connect(step.get(), &BareStep::stepChanged, [calls] { ++*calls; });
    return [step, calls] {
        step->setStep(*calls + 1);
        return *calls;
    };
}

} // namespace

void Bench::addProgress()
{
    add("progress step update/one receiver/ours", &updateOurs);
    add("progress step update/one receiver/mutex and signal", &updateBare);
}
