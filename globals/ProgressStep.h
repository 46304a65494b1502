#pragma once

#include "globals/globals_export.h"

#include <QMutex>
#include <QObject>
#include <QString>

#include <atomic>

namespace TEKLUVA {

/// One named step of a long process: what a progress display shows of it. StateHandler makes and owns the
/// steps; worker code moves them on, and the display listens to the two signals.
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
/// Thread-safe: one thread may change a step while others read it, until StateHandler deletes it. The signals
/// are emitted in the thread that makes the change and while the step is locked, so that they come in the
/// order of the changes: a receiver connected directly may read the step but must not change it. (A finished
/// step ignores changes, even there; but setVisible() and setProgressStepBlocked() would wait for ever.)
/// Receivers in other threads get queued copies.
class GLOBALS_EXPORT ProgressStep : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(ProgressStep)

public:
    /// What handleProgressState() makes of a step. Values that are not named here behave like E_PRT_BAR.
    enum E_ProgressType : int {
        E_PRT_BAR = 0,         ///< the bar only
        E_PRT_PERCENT = 1,     ///< the percentage follows the bar
        E_PRT_BAR_ALT = 2,     ///< as E_PRT_BAR, told apart by the display
        E_PRT_PERCENT_ALT = 3, ///< as E_PRT_PERCENT, told apart by the display
        E_PRT_TRANSFER = 4,    ///< the display text tells the size, and "Abgeschlossen" in the end
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

    unsigned int getProgressStepId() const { return m_id; }
    QString getProgressStepName() const { return m_name; }
    E_ProgressType getProgressStepType() const { return m_type; }
    E_ProgressState getProgressStepState() const { return m_state; }
    QString getProgressStepLabel() const { return m_label; }
    QString getProgressStepDescription() const { return m_description.get(); }
    /// What the caller has set.
    QString getProgressStepText() const { return m_text.get(); }
    /// What is shown: the text, with the size behind it for a transfer.
    QString getProgressStepDisplayText() const { return m_displayText.get(); }
    /// In percent, 0 to 100.
    unsigned int getProgressStepProgress() const { return m_progress; }
    bool getProgressStepBlocked() const { return m_blocked; }
    unsigned int getProgressBarSteps() const { return m_barSteps; }
    /// May be beyond getProgressBarSteps(), when it was counted up or set so.
    unsigned int getCurrentProgressBarStep() const { return m_currentBarStep; }
    double getProgressBarStepDivFactor() const { return m_divFactor; }
    bool getVisible() const { return m_visible; }

    /// Works on a finished step, too. Emits nothing.
    void setProgressStepBlocked(bool blocked);

    /// \name Changes
    /// A finished or blocked step ignores them. What differs from the value so far is stored and emits
    /// updateProgressStepRequested() once.
    /// @{

    /// Only a blocked step ignores it: a finished one may be shown or hidden.
    void setVisible(bool visible);
    /// In percent; more than 100 is stored as 100.
    void setProgressStepProgress(unsigned int percent);
    void setProgressStepType(E_ProgressType type);
    /// The text and the display text.
    void setProgressStepText(const QString& text);
    void setProgressStepDescription(const QString& description);
    void setProgressBarSteps(unsigned int steps);
    void setCurrentProgressBarStep(unsigned int step);
    /// One step further, beyond the last one if need be. Always emits.
    void incrementCurrentProgressBarStep();
    /// What handleProgressState() divides by, 1024 for a bar that counts kilobytes, say; 0 stands for 1.
    /// Emits nothing.
    void setProgressBarStepDivFactor(double factor);
    /// Emits changeProgressStateRequested() and then updateProgressStepRequested(). A step that finishes
    /// without having run passes through E_PS_RUNNING, with both signals for each of the two states; its bar
    /// is full then and its description empty.
    void setProgressStepState(E_ProgressState state);
    /// @}

public Q_SLOTS:
    /// Moves the bar to \p received of \p total, which are bytes for a transfer; made for the progress signal
    /// of a download. Both are divided by the factor, cut to whole numbers and kept in 32 bits; the total is
    /// never less than what was received. A finished or blocked step ignores it. Emits
    /// updateProgressStepRequested() when the bar has changed, but for a transfer only when its total has.
    void handleProgressState(qint64 received, qint64 total);

Q_SIGNALS:
    /// Something visible has changed.
    void updateProgressStepRequested(ProgressStep* step_data);
    /// The state has changed; see setProgressStepState().
    void changeProgressStateRequested(ProgressStep* step);

private:
    /// A text that may be read while another thread sets it. Its lock is held for the copy only, so that a
    /// receiver of a signal can read the step.
    class SharedText
    {
    public:
        explicit SharedText(QString text = QString());
        QString get() const;
        void set(const QString& text);

    private:
        mutable QMutex m_mutex;
        QString m_text;
    };

    bool acceptsChanges() const { return !m_blocked && m_state != E_PS_FINISHED; }
    template <typename Change>
    void change(Change&& change);
    void enterState(E_ProgressState state);
    void finish();
    bool moveBar(quint32 current, quint32 steps);

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
    QMutex m_mutex; ///< held while the step is changed and its signals are emitted
};

} // namespace TEKLUVA
