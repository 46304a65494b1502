#pragma once

#include "globals/globals_export.h"

#include <QMutex>
#include <QObject>
#include <QString>

#include <atomic>

namespace TEKLUVA {

/// One named step of a long process, with all that a progress display shows of it. StateHandler makes and
/// owns the steps, worker code advances them, and the display listens to the two signals.
///
///     step->setProgressBarSteps(files.size());
///     for (const QString& file : files) {
///         load(file);
///         step->incrementCurrentProgressBarStep();
///     }
///     step->setProgressStepState(ProgressStep::E_PS_FINISHED);
///
/// A finished step is final: only blocking and visibility still change. A blocked step ignores everything but
/// being unblocked, changes of its state included.
///
/// Thread-safe until StateHandler deletes the step: threads may change it while others read it. The signals
/// are emitted in the thread that makes the change, under the step's lock, and so in the order of the
/// changes. Receivers in other threads get the signals queued.
///
/// A receiver connected directly may read and change the step, and may run an event loop, but not delete it.
/// Its changes take effect at once: their signals come in between, and receivers after it find the step as it
/// is by then. As long as it runs, changes by other threads wait, so it must not wait for another thread that
/// makes one.
class GLOBALS_EXPORT ProgressStep : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(ProgressStep)

public:
    /// What handleProgressState() updates. Values that are not named here behave like E_PRT_BAR.
    enum E_ProgressType : int {
        E_PRT_BAR = 0,         ///< the bar only
        E_PRT_PERCENT = 1,     ///< the bar and the percentage; for others see setAutoPercent()
        E_PRT_BAR_ALT = 2,     ///< as E_PRT_BAR; displays may show it differently
        E_PRT_PERCENT_ALT = 3, ///< as E_PRT_PERCENT; displays may show it differently
        E_PRT_TRANSFER = 4,    ///< the bar and the size in the display text, "Abgeschlossen" at the end
    };
    Q_ENUM(E_ProgressType)

    /// How far a step is.
    enum E_ProgressState : int {
        E_PS_CREATED = 0, ///< not running yet
        E_PS_WAITING = 1, ///< not running yet; a step treats both alike
        E_PS_RUNNING = 2,
        E_PS_FINISHED = 3, ///< final
    };
    Q_ENUM(E_ProgressState)

    ProgressStep(unsigned int id, QString name, E_ProgressType type, QString label, QString description,
                 E_ProgressState state);
    /// Waits for a thread that has not yet returned from a change: its last signal may have led to this.
    ~ProgressStep() override;

    unsigned int getProgressStepId() const { return m_id; }
    QString getProgressStepName() const { return m_name; }
    E_ProgressType getProgressStepType() const { return m_type; }
    E_ProgressState getProgressStepState() const { return m_state; }
    QString getProgressStepLabel() const { return m_label; }
    QString getProgressStepDescription() const { return m_description.get(); }
    /// As the caller has set it.
    QString getProgressStepText() const { return m_text.get(); }
    /// What a display shows: the text, followed by the size for a transfer.
    QString getProgressStepDisplayText() const { return m_displayText.get(); }
    /// In percent, 0 to 100.
    unsigned int getProgressStepProgress() const { return m_progress; }
    bool getProgressStepBlocked() const { return m_blocked; }
    unsigned int getProgressBarSteps() const { return m_barSteps; }
    /// May exceed getProgressBarSteps(), when it was incremented or set so.
    unsigned int getCurrentProgressBarStep() const { return m_currentBarStep; }
    bool getAutoPercent() const { return m_autoPercent; }
    double getProgressBarStepDivFactor() const { return m_divFactor; }
    /// False: for displays, and nothing in the library sets it.
    bool getProgressStepFlag() const { return m_flag; }
    bool getVisible() const { return m_visible; }

    /// Works on a finished step as well. Emits nothing.
    void setProgressStepBlocked(bool blocked);

    /// \name Changes
    /// A finished or blocked step ignores them. A value that differs from the stored one is stored, and
    /// updateProgressStepRequested() is emitted once.
    /// @{

    /// Only a blocked step ignores it: a finished one may still be shown or hidden.
    void setVisible(bool visible);
    /// In percent; more than 100 is stored as 100.
    void setProgressStepProgress(unsigned int percent);
    void setProgressStepType(E_ProgressType type);
    /// The text and the display text.
    void setProgressStepText(const QString& text);
    void setProgressStepDescription(const QString& description);
    void setProgressBarSteps(unsigned int steps);
    void setCurrentProgressBarStep(unsigned int step);
    /// Adds 1, also beyond the last step. Always emits.
    void incrementCurrentProgressBarStep();
    /// Lets the percentage of a step of the types E_PRT_PERCENT and E_PRT_PERCENT_ALT follow its bar,
    /// whatever moves it, from now on. Off by default: only handleProgressState() sets both.
    void setAutoPercent(bool follows);
    /// What handleProgressState() divides by, for example 1024 for a bar that counts kilobytes. 0 is stored
    /// as 1. Emits nothing.
    void setProgressBarStepDivFactor(double factor);
    /// Emits changeProgressStateRequested() and then updateProgressStepRequested(). A step that finishes
    /// without having run passes through E_PS_RUNNING, with both signals for each of the two states. A
    /// finished step has no description and a full bar, but for a transfer, whose bar stays and whose display
    /// text becomes "Abgeschlossen".
    void setProgressStepState(E_ProgressState state);
    /// @}

public Q_SLOTS:
    /// Moves the bar to \p received of \p total, which are bytes for a transfer. Connect it to the progress
    /// signal of a download. Both numbers are divided by the factor, truncated and kept in 32 bits; a total
    /// below what was received becomes equal to it. An unknown total, -1, becomes 4294967295 with a factor of
    /// 1, so that the bar hardly moves, and 0, and so what was received, with a larger one: call
    /// setCurrentProgressBarStep() instead as long as the total is unknown. A finished or blocked step
    /// ignores the call. Emits updateProgressStepRequested() when the bar has changed, but for a transfer
    /// only when its total has.
    void handleProgressState(qint64 received, qint64 total);

Q_SIGNALS:
    /// Something visible has changed.
    void updateProgressStepRequested(ProgressStep* step_data);
    /// The state has changed; see setProgressStepState().
    void changeProgressStateRequested(ProgressStep* step);

private:
    /// A text that may be read while another thread sets it. Its lock is held for the copy only: a receiver
    /// of a signal can read the step.
    class GLOBALS_EXPORT SharedText
    {
    public:
        explicit SharedText(QString text = QString());
        QString get() const;
        void set(const QString& text);

    private:
        mutable QMutex m_mutex;
        QString m_text;
    };

    class Turn;

    bool acceptsChanges() const { return !m_blocked && m_state != E_PS_FINISHED; }
    template <typename Change>
    void change(Change&& change);
    void enterState(E_ProgressState state);
    bool finish();
    bool moveBar(quint32 current, quint32 steps);
    bool followBar();

    // Not behind a pointer: worker code updates and displays read steps all the time. With a pointer an
    // update took 15 ns instead of 12, reading a number 2.6 ns instead of 0.3, and creating a step 109 ns and
    // 3 allocations instead of 89 ns and 2.
    const unsigned int m_id;
    const QString m_name;
    const QString m_label;
    std::atomic<E_ProgressType> m_type;
    std::atomic<E_ProgressState> m_state;
    SharedText m_description;
    SharedText m_text;
    SharedText m_displayText;
    std::atomic<unsigned int> m_barSteps = 100;
    std::atomic<unsigned int> m_currentBarStep = 0;
    std::atomic<unsigned int> m_progress = 0;
    std::atomic<double> m_divFactor = 1.0;
    std::atomic<bool> m_blocked = false;
    std::atomic<bool> m_visible = true;
    const bool m_flag = false;
    std::atomic<bool> m_autoPercent = false;
    std::atomic<quint32> m_holder = 0; ///< the number of the thread that holds the mutex, 0 for none
    QMutex m_mutex;                    ///< held while the step is changed and its signals are emitted
};

} // namespace TEKLUVA
