#include "globals/progress/Throttle_p.h"

#include <algorithm>

namespace TEKLUVA {

Throttle::Throttle(std::chrono::milliseconds interval)
    : m_interval(interval)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer); // others may be early
    connect(&m_timer, &QTimer::timeout, this, &Throttle::serve);
    connect(this, &Throttle::requested, this, &Throttle::schedule, Qt::QueuedConnection);
}

void Throttle::request()
{
    const bool isWaiting = m_isRequested.exchange(true);
    if (isWaiting)
        return;
    try {
        Q_EMIT requested();
    } catch (...) {
        m_isRequested = false; // no event is on its way, and the next request needs one
        throw;
    }
}

void Throttle::schedule()
{
    const auto passed =
        std::chrono::milliseconds(m_sinceLast.isValid() ? m_sinceLast.elapsed() : m_interval.count());
    m_timer.start(std::max(m_interval - passed, std::chrono::milliseconds::zero()));
}

void Throttle::serve()
{
    m_isRequested = false; // first: what changes from now on is a new request
    m_sinceLast.start();
    Q_EMIT due();
}

} // namespace TEKLUVA
