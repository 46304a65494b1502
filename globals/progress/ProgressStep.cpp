#include "globals/ProgressStep.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <utility>

namespace TEKLUVA {

namespace {

constexpr unsigned int ALL = 100; ///< percent

/// Lets signals be queued: Qt looks their types up by the names that they are declared with.
void registerMetaTypes()
{
    static std::once_flag isRegistered;
    std::call_once(isRegistered, [] { qRegisterMetaType<ProgressStep*>("ProgressStep*"); });
}

/// The whole part of \p quotient in 32 bits. What does not fit wraps around, as it does between integers: an
/// unknown total of -1 becomes a very large one.
quint32 wholePart(double quotient)
{
    constexpr double TOO_LARGE = 9223372036854775808.0; // 2^63
    if (!(std::fabs(quotient) < TOO_LARGE))
        return 0;
    return static_cast<quint32>(static_cast<qint64>(quotient));
}

quint32 percentOf(quint32 current, quint32 steps)
{
    if (steps == 0)
        return 0;
    return static_cast<quint32>(static_cast<double>(current) / steps * ALL);
}

QString sizeText(qint64 bytes)
{
    constexpr qint64 KILOBYTE = 1024;
    const auto kilobytes = static_cast<qint32>(bytes / KILOBYTE);
    return kilobytes < 1 ? QStringLiteral("~1") : QString::number(kilobytes);
}

bool isPercentage(ProgressStep::E_ProgressType type)
{
    return type == ProgressStep::E_PRT_PERCENT || type == ProgressStep::E_PRT_PERCENT_ALT;
}

/// Tells the calling thread from all others. QThread::currentThread() takes longer, and 32 bits fit into a
/// gap of the class.
quint32 threadNumber()
{
    static std::atomic<quint32> last = 0;
    thread_local const quint32 number = ++last;
    return number;
}

/// Stores \p value. False when the field held it already. Expects the lock of the step: only one thread at a
/// time stores, so that load and store need not be one operation.
template <typename Field, typename Value>
bool store(std::atomic<Field>& field, Value value)
{
    if (field.load(std::memory_order_relaxed) == value)
        return false;
    field.store(value, std::memory_order_release);
    return true;
}

} // namespace

ProgressStep::SharedText::SharedText(QString text)
    : m_text(std::move(text))
{
}

QString ProgressStep::SharedText::get() const
{
    const QMutexLocker lock(&m_mutex);
    return m_text;
}

void ProgressStep::SharedText::set(const QString& text)
{
    const QMutexLocker lock(&m_mutex);
    m_text = text;
}

ProgressStep::ProgressStep(unsigned int id, QString name, E_ProgressType type, QString label,
                           QString description, E_ProgressState state)
    : m_id(id)
    , m_name(std::move(name))
    , m_label(std::move(label))
    , m_type(type)
    , m_state(state)
    , m_description(std::move(description))
{
    registerMetaTypes();
}

/// A thread's turn to change the step and to announce what it has changed. A receiver that changes the step
/// in turn does so within that of its thread. (A recursive mutex would do the same with one more allocation.)
class ProgressStep::Turn
{
    Q_DISABLE_COPY(Turn)

public:
    explicit Turn(ProgressStep* step)
    {
        const quint32 thisThread = threadNumber();
        if (step->m_holder.load(std::memory_order_acquire) == thisThread)
            return;
        step->m_mutex.lock();
        step->m_holder.store(thisThread, std::memory_order_relaxed);
        m_step = step;
    }
    ~Turn()
    {
        if (!m_step)
            return;
        m_step->m_holder.store(0, std::memory_order_release);
        m_step->m_mutex.unlock();
    }

private:
    ProgressStep* m_step = nullptr; ///< null within an outer turn
};

ProgressStep::~ProgressStep()
{
    const Turn turn(this);
}

/// Makes \p change, and announces it if \p change returns true.
template <typename Change>
void ProgressStep::change(Change&& change)
{
    if (!acceptsChanges())
        return;
    const Turn turn(this);
    // Another thread may have finished the step while this one waited.
    if (!acceptsChanges())
        return;
    const bool mustAnnounce = change();
    if (mustAnnounce)
        Q_EMIT updateProgressStepRequested(this);
}

void ProgressStep::setProgressStepBlocked(bool blocked)
{
    const Turn turn(this);
    m_blocked = blocked;
}

void ProgressStep::setVisible(bool visible)
{
    if (m_blocked)
        return;
    const Turn turn(this);
    if (m_blocked)
        return;
    const bool isChanged = store(m_visible, visible);
    if (isChanged)
        Q_EMIT updateProgressStepRequested(this);
}

void ProgressStep::setProgressStepProgress(unsigned int percent)
{
    change([this, percent] {
        if (percent == m_progress)
            return false;
        m_progress = std::min(percent, ALL);
        return true; // also for 250 again, which is not what was stored
    });
}

void ProgressStep::setProgressStepType(E_ProgressType type)
{
    change([this, type] {
        const bool isChanged = store(m_type, type);
        followBar();
        return isChanged;
    });
}

void ProgressStep::setProgressStepText(const QString& text)
{
    change([this, &text] {
        if (text == m_text.get())
            return false;
        m_text.set(text);
        m_displayText.set(text);
        return true;
    });
}

void ProgressStep::setProgressStepDescription(const QString& description)
{
    change([this, &description] {
        if (description == m_description.get())
            return false;
        m_description.set(description);
        return true;
    });
}

void ProgressStep::setProgressBarSteps(unsigned int steps)
{
    change([this, steps] {
        const bool isChanged = store(m_barSteps, steps);
        followBar();
        return isChanged;
    });
}

void ProgressStep::setCurrentProgressBarStep(unsigned int step)
{
    change([this, step] {
        const bool isChanged = store(m_currentBarStep, step);
        followBar();
        return isChanged;
    });
}

void ProgressStep::incrementCurrentProgressBarStep()
{
    change([this] {
        ++m_currentBarStep;
        followBar();
        return true;
    });
}

void ProgressStep::setAutoPercent(bool follows)
{
    change([this, follows] {
        m_autoPercent = follows;
        return followBar();
    });
}

/// True when that has changed the percentage.
bool ProgressStep::followBar()
{
    if (!m_autoPercent || !isPercentage(m_type))
        return false;
    const quint32 steps = m_barSteps;
    return store(m_progress, percentOf(std::min<quint32>(m_currentBarStep, steps), steps));
}

void ProgressStep::setProgressBarStepDivFactor(double factor)
{
    change([this, factor] {
        m_divFactor = factor == 0.0 ? 1.0 : factor;
        return false;
    });
}

void ProgressStep::setProgressStepState(E_ProgressState state)
{
    change([this, state] {
        if (state == m_state)
            return false;
        if (state == E_PS_FINISHED)
            return finish();
        enterState(state);
        return true;
    });
}

void ProgressStep::enterState(E_ProgressState state)
{
    m_state = state;
    Q_EMIT changeProgressStateRequested(this);
}

/// False when a receiver has finished the step first.
bool ProgressStep::finish()
{
    if (m_state != E_PS_RUNNING) {
        enterState(E_PS_RUNNING);
        Q_EMIT updateProgressStepRequested(this);
        if (m_state == E_PS_FINISHED)
            return false;
    }
    // The state comes last: whoever sees it sees the finished step.
    if (m_type == E_PRT_TRANSFER)
        m_displayText.set(tr("Abgeschlossen"));
    else
        m_currentBarStep = m_barSteps.load();
    followBar();
    m_description.set(QString());
    enterState(E_PS_FINISHED);
    return true;
}

bool ProgressStep::moveBar(quint32 current, quint32 steps)
{
    const bool isMoved = store(m_currentBarStep, current);
    const bool isResized = store(m_barSteps, steps);
    return isMoved || isResized;
}

void ProgressStep::handleProgressState(qint64 received, qint64 total)
{
    change([this, received, total] {
        const quint32 current = wholePart(static_cast<double>(received) / m_divFactor);
        const quint32 steps = std::max(wholePart(static_cast<double>(total) / m_divFactor), current);
        const quint32 stepsBefore = m_barSteps;
        const bool isMoved = moveBar(current, steps);
        if (!isMoved)
            return false;
        if (m_type == E_PRT_TRANSFER) {
            m_displayText.set(tr("%1 (%2 kB)").arg(m_text.get(), sizeText(total)));
            return steps != stepsBefore; // displays of transfers show the total only
        }
        if (isPercentage(m_type))
            m_progress = percentOf(current, steps);
        return true;
    });
}

} // namespace TEKLUVA
