#pragma once

#include "globals/ProgressStep.h"
#include "globals/globals.h"
#include "globals/globals_export.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <memory>

class QTimer;

namespace TEKLUVA {

/// What StateHandler knows about the current process and the status message.
///
/// Thread-safe: each access holds the record's own lock, and nothing is called back under it. The clear timer
/// belongs to the thread that made the record; from another one it is started and stopped by an event.
class GLOBALS_EXPORT StateHandlerData
{
    Q_DISABLE_COPY(StateHandlerData)

public:
    StateHandlerData();
    ~StateHandlerData();

    /// \name Steps
    /// By name. The record does not own them, but deletes one when told to.
    /// @{
    QMap<QString, ProgressStep*> getProgressStepMap() const;
    /// Null for an unknown name.
    ProgressStep* getProgressStep(const QString& name) const;
    bool hasStep(const QString& name) const;
    bool hasSteps() const;
    /// In ascending order.
    QStringList getListStepNames() const;
    /// An older step of that name is forgotten and not deleted, because somebody may still be working on it.
    void addStep(const QString& name, ProgressStep* step);
    /// Forgets the step. With \p deleteStep it is deleted by the event loop of its own thread.
    void removeStep(const QString& name, bool deleteStep);
    /// True from removeStep() with its \p deleteStep until endDeletion().
    bool isDeletionPending(const ProgressStep* step) const;
    /// \p step, which does not exist any more, is not called any more either.
    void endDeletion(const QObject* step);
    /// Forgets all steps without deleting them.
    void clearStepMap();

    /// Returns the new count.
    unsigned int increaseStepCounter();
    void setStepCounter(unsigned int count);
    unsigned int getStepCounter() const;

    /// Null when no step is running, and when the step was deleted.
    ProgressStep* getActiveProgressStep() const;
    void setActiveProgressStep(ProgressStep* step);
    /// @}

    /// \name Process
    /// @{
    QString getProcessName() const;
    void setProcessName(const QString& name);
    /// Whether the user has requested an abort.
    bool getAbortState() const;
    void setAbortState(bool abort);
    /// Whether the display has an abort button.
    bool getShowAbortState() const;
    void setShowAbortState(bool show);
    /// Whether the display shows the progress of all steps together.
    bool getShowTotalProgressState() const;
    void setShowTotalProgressState(bool show);
    /// @}

    /// \name Status message
    /// @{
    QString getCurrentMessage() const;
    void setCurrentMessage(const QString& message);
    E_StateType getCurrentState() const;
    void setCurrentState(E_StateType type);
    /// Starts the timer anew, for \p msec milliseconds.
    void startClearTimer(int msec);
    void stopClearTimer();
    void setClearTimerSingleShot(bool singleShot);
    /// Belongs to the record.
    QTimer* getClearTimer();
    /// @}

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
