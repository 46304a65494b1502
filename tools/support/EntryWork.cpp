#include "support/EntryWork.h"

#include "support/Output.h"

#include "globals/StateHandler.h"

namespace globalsctl {

using namespace TEKLUVA;

namespace {

const auto STEP = QStringLiteral("entries");

} // namespace

EntryWork::EntryWork(const QString& title, int entries)
{
    StateHandler* states = StateHandler::getInstance();
    states->newProcess(title, true, true);
    states->addProgressStep(STEP, ProgressStep::E_PRT_BAR, title, QString(), false,
                            ProgressStep::E_PS_WAITING);
    states->setProgressBarSteps(STEP, static_cast<unsigned int>(entries));
    states->setProgressStepState(STEP, ProgressStep::E_PS_RUNNING);
}

bool EntryWork::beginEntry(const QString& entry)
{
    StateHandler* states = StateHandler::getInstance();
    if (states->wasAborted())
        return false;
    states->setProgressStepText(STEP, entry);
    states->setCurrentProgressBarStep(STEP, static_cast<unsigned int>(m_count));
    ++m_count;
    return true;
}

void EntryWork::printError(const QString& message)
{
    m_display.clear();
    globalsctl::printError(message);
}

void EntryWork::throwIfInterrupted(const QString& consequence)
{
    m_interruption.check(consequence);
}

} // namespace globalsctl
