#pragma once

#include "globals/StateHandler.h"

#include <future>
#include <type_traits>
#include <utility>

namespace TEKLUVA {

/// Does \p work and ends the process with its result; used by runWorker(). An exception ends it as failed and
/// passes on.
template <typename Work>
E_ProcessResult workAndEndProcess(Work& work)
{
    StateHandler* states = StateHandler::getInstance();
    E_ProcessResult result = E_PR_FAILED;
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Work&>>) {
            work();
            result = states->wasAborted() ? E_PR_ABORTED : E_PR_DONE;
        } else {
            result = work();
        }
    } catch (...) {
        states->endProcess(E_PR_FAILED);
        throw;
    }
    states->endProcess(result);
    return result;
}

/// Runs \p work as the process \p name, with a total and an abort button, in a thread of its own. \p work
/// adds the steps of the process, asks StateHandler::wasAborted() between two pieces, and returns an
/// E_ProcessResult, or nothing: then the process was aborted if the user has asked for that, and otherwise
/// done. StateHandler::processFinished() tells of its end, for receivers in the main thread by an event.
///
///     m_work = runWorker(tr("Opening"), [files] {
///         auto* states = StateHandler::getInstance();
///         states->addProgressStep("models", ProgressStep::E_PRT_BAR, tr("Models"), "", false,
///                                 ProgressStep::E_PS_WAITING);
///         ...
///     });
///
/// Returns the result to come. Its get() waits for the end, and throws what \p work has thrown: call it when
/// processFinished() has told. When it is destroyed it waits, too: call StateHandler::setAbort() before.
///
/// Main thread only, and while no other process is running. Throws std::system_error when there can be no
/// thread; the process has ended as failed then.
template <typename Work>
[[nodiscard]] std::future<E_ProcessResult> runWorker(const QString& name, Work work)
{
    StateHandler* states = StateHandler::getInstance();
    states->newProcess(name, true, true);
    try {
        return std::async(std::launch::async,
                          [work = std::move(work)]() mutable { return workAndEndProcess(work); });
    } catch (...) {
        states->endProcess(E_PR_FAILED);
        throw;
    }
}

} // namespace TEKLUVA
