#pragma once

#include "globals/ProgressSnapshot.h"
#include "globals/ProgressStep.h"
#include "globals/StateHandlerData.h" // for programs that include only this header
#include "globals/globals.h"

#include <QMap>
#include <QObject>

#include <memory>

namespace TEKLUVA {

/// Reports what long-running work is doing: one process at a time, made of named steps, an abort request of
/// the user, and a status message that clears itself. It draws nothing: dialogs, bars and status lines listen
/// to its signals and to those of the steps.
///
///     auto* states = StateHandler::getInstance();
///     states->newProcess(tr("Opening"), true, true);
///     states->addProgressStep("models", ProgressStep::E_PRT_BAR, tr("Models"), "", false,
///                             ProgressStep::E_PS_WAITING);
///     states->setProgressBarSteps("models", files.size());
///     states->setProgressStepState("models", ProgressStep::E_PS_RUNNING);
///     for (int i = 0; i < files.size() && !states->wasAborted(); ++i) {
///         load(files[i]);
///         states->setCurrentProgressBarStep("models", i + 1);
///     }
///     states->endProcess(states->wasAborted() ? E_PR_ABORTED : E_PR_DONE);
///
/// One step runs at a time: starting a step finishes the one before. Worker.h runs such work in a thread of
/// its own.
///
/// Displays have a choice: the signals of the handler and of each step tell of every change, and
/// progressChanged() of the state of all of them, as often as a user can see.
///
/// Threads: the first getInstance() must be called on the main thread. From then on any thread may add and
/// change steps, request an abort and ask for it; signals are emitted in the calling thread. A step that a
/// worker starts becomes the active one when the main thread handles its signal. Call newProcess() and
/// endProcess() only when nobody works on the old process any more; a receiver of processFinished() may begin
/// the next one. A status message with a time is removed from the main thread, whichever thread has set it.
///
/// Ownership: the handler has no parent, and nothing in the library destroys it. It owns the steps: they live
/// in its thread and are deleted there after endProcess() or the next newProcess(). A step that is replaced
/// by one of the same name is never deleted, and neither are the steps of a process that has not ended when
/// the handler is destroyed.
class GLOBALS_EXPORT StateHandler : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(StateHandler)

public:
    static StateHandler* getInstance();
    ~StateHandler() override;

    /// \name Process
    /// @{

    /// Ends the current process, whose steps are deleted, and begins one without steps and without an abort
    /// request. Emits createNewProcessRequested() first, while the old steps are still there.
    void newProcess(const QString& name, bool show_total_progress, bool show_abort_btn);
    /// Ends the process: emits the last progressChanged() and processFinished(), while the steps are still
    /// there, then deletes them. The abort request holds until the next newProcess(). Does nothing when no
    /// process is running, so after the first call.
    void endProcess(E_ProcessResult result);
    /// From newProcess() to endProcess().
    bool isProcessRunning() const;
    /// Emits renameProcessTitleRequested().
    void setProcessName(const QString& name);
    QString getProcessName() const;
    bool showTotalProgress() const;
    /// How much of all steps is done, in whole percent, rounded down. A step counts with its weight and with
    /// fractionDone(); 0 without steps.
    unsigned int totalProgress() const;
    /// The process and its steps as they are now, for a display. To be called where the steps cannot be
    /// deleted meanwhile: in the main thread, or by the work itself.
    ProgressSnapshot getSnapshot() const;
    /// @}

    /// \name Steps
    /// @{

    /// Makes a step with the next id, 1 for the first one of a process, and emits
    /// createNewProgressStepRequested(); with \p prepend the display puts it in front of the others.
    void addProgressStep(const QString& name, ProgressStep::E_ProgressType type, const QString& label,
                         const QString& description, bool prepend, ProgressStep::E_ProgressState state);
    /// Null for an unknown name.
    ProgressStep* getStepData(const QString& name) const;
    QMap<QString, ProgressStep*> getAllSteps() const;
    /// The step that was started last and still runs, null for none. A step that was added as running is not
    /// noticed: add it as waiting, and start it then.
    ProgressStep* getActiveStep() const;
    /// @}

    /// \name Changes of a step by its name
    /// As the step's own functions; nothing happens for an unknown name.
    /// @{
    void setProgressStepState(const QString& name, ProgressStep::E_ProgressState state);
    void setProgressStepText(const QString& name, const QString& text);
    void setProgressStepDescription(const QString& name, const QString& text);
    void setCurrentProgressBarStep(const QString& name, unsigned int step);
    void setProgressBarSteps(const QString& name, unsigned int steps);
    void setAutoPercent(const QString& name, bool follows);
    /// How much the step counts in totalProgress(), 1 by default, for example the number of its files; 0
    /// or less, or no number, for a step that does not count. Holds until the process ends.
    void setProgressStepWeight(const QString& name, double weight);
    /// @}

    /// \name Abort
    /// @{

    /// Requests that the work ends, and emits abortProcess(). Holds until the next newProcess().
    void setAbort();
    /// Whether an abort was requested, to be asked between two pieces of work. If the display has an abort
    /// button, the calling thread's pending events are processed first, so that a click on it can arrive.
    bool wasAborted();
    /// @}

    /// \name Status message
    /// @{

    /// Shows \p msg, for \p time milliseconds if that is more than 0. Otherwise it stays until a timer that
    /// an earlier message started runs out.
    void newStatusMessage(const QString& msg, E_StateType type, int time);
    /// Appends a blank and \p msg to the message.
    void addStatusMessage(const QString& msg);
    QString getCurrentMessage() const;
    /// @}

public Q_SLOTS:
    /// Removes the status message: emits statusMessage() with an empty text, E_ST_NONE and time 1.
    void clear();
    /// Updates the active step after the state of \p step has changed.
    void handleChangeProgressStateRequest(ProgressStep* step);

Q_SIGNALS:
    /// \p time in milliseconds, 0 or less for a message that stays.
    void statusMessage(QString msg, E_StateType type, int time);
    /// A process begins: a display empties itself and shows the new title.
    void createNewProcessRequested(QString name, bool show_total_progress, bool show_abort_btn);
    /// A step was added; a display connects to its signals here.
    void createNewProgressStepRequested(ProgressStep* step_data, bool prepend);
    /// The user has requested an abort.
    void abortProcess();
    void renameProcessTitleRequested(QString title);
    /// endProcess() was called.
    void processFinished(TEKLUVA::E_ProcessResult result);
    /// Something that a display shows has changed, in whatever thread. Emitted in the main thread, by its
    /// event loop and under no lock, at most 30 times a second; and by endProcess() for the last state, in
    /// the thread that calls it. Connect to it where getSnapshot() may be called.
    void progressChanged(const TEKLUVA::ProgressSnapshot& snapshot);

protected:
    void connectNotify(const QMetaMethod& signal) override;

private:
    StateHandler();

    void deleteSteps();
    void forgetDeletedStep(QObject* step);
    unsigned int percentDone(const QVector<ProgressStepSnapshot>& steps) const;

    static StateHandler* __instance;

    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA

Q_DECLARE_METATYPE(TEKLUVA::E_StateType)
