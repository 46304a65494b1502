#pragma once

#include "globals/LockedRecord.h"
#include "globals/ProgressStep.h"
#include "globals/globals.h"
#include "globals/globals_export.h"

#include <QMap>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVector>

namespace TEKLUVA {

/// What StateHandler knows of the current process and of the status message.
///
/// Thread-safe: each access holds the record's own lock, and nothing is called back under it. The clear timer
/// belongs to the thread that made the record; only that thread may start and stop it.
class GLOBALS_EXPORT StateHandlerData : private LockedRecord
{
    Q_DISABLE_COPY(StateHandlerData)

public:
    StateHandlerData() = default;

    /// \name Steps
    /// By name. The record does not own them, but deletes one when told to.
    /// @{
    QMap<QString, ProgressStep*> getProgressStepMap() const { return get(m_steps); }
    /// Null for an unknown name.
    ProgressStep* getProgressStep(const QString& name) const;
    bool hasStep(const QString& name) const;
    bool hasSteps() const;
    /// Ascending.
    QStringList getListStepNames() const;
    /// An older step of that name is forgotten and not deleted: somebody may still be working on it.
    void addStep(const QString& name, ProgressStep* step);
    /// Forgets the step; with \p deleteStep its own thread deletes it once it is back in its event loop.
    void removeStep(const QString& name, bool deleteStep);
    /// Whether removeStep() has given \p step to be deleted, which it is not yet.
    bool isThrownAway(const ProgressStep* step) const;
    /// Forgets all steps without deleting them.
    void clearStepMap();

    /// The new count.
    unsigned int increaseStepCounter();
    void setStepCounter(unsigned int count) { set(m_stepCounter, count); }
    unsigned int getStepCounter() const { return get(m_stepCounter); }

    /// Null when no step is running, and when the step was deleted.
    ProgressStep* getActiveProgressStep() const { return get(m_activeStep); }
    void setActiveProgressStep(ProgressStep* step) { set(m_activeStep, QPointer<ProgressStep>(step)); }
    /// @}

    /// \name Process
    /// @{
    QString getProcessName() const { return get(m_processName); }
    void setProcessName(const QString& name) { set(m_processName, name); }
    /// Whether the user has asked for an end.
    bool getAbortState() const { return get(m_abort); }
    void setAbortState(bool abort) { set(m_abort, abort); }
    /// Whether the display has an abort button.
    bool getShowAbortState() const { return get(m_showAbort); }
    void setShowAbortState(bool show) { set(m_showAbort, show); }
    /// Whether the display shows the progress of all steps together.
    bool getShowTotalProgressState() const { return get(m_showTotalProgress); }
    void setShowTotalProgressState(bool show) { set(m_showTotalProgress, show); }
    /// @}

    /// \name Status message
    /// @{
    QString getCurrentMessage() const { return get(m_message); }
    void setCurrentMessage(const QString& message) { set(m_message, message); }
    E_StateType getCurrentState() const { return get(m_messageType); }
    void setCurrentState(E_StateType type) { set(m_messageType, type); }
    /// Starts the timer anew, for \p msec milliseconds.
    void startClearTimer(int msec);
    void stopClearTimer();
    void setClearTimerSingleShot(bool singleShot);
    QTimer* getClearTimer() { return &m_clearTimer; }
    /// @}

private:
    QMap<QString, ProgressStep*> m_steps;
    QVector<QPointer<ProgressStep>> m_thrownAway;
    QPointer<ProgressStep> m_activeStep;
    unsigned int m_stepCounter = 0;
    QString m_processName;
    bool m_abort = false;
    bool m_showAbort = false;
    QString m_message;
    E_StateType m_messageType = E_ST_NONE;
    QTimer m_clearTimer;
    bool m_showTotalProgress = false;
};

} // namespace TEKLUVA
