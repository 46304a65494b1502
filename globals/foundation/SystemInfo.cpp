#include "globals/SystemInfo.h"

namespace TEKLUVA {

/// The place for a platform's queries.
class GLOBALS_NO_EXPORT SystemInfo::Private
{
public:
    quint64 getMaximumRam() const { return 0; }
    quint64 getFreeRam() const { return 0; }
    quint64 getUsedRam() const { return 0; }
};

SystemInfo::SystemInfo()
    : d(std::make_unique<Private>())
    , m_timer(std::make_unique<QTimer>())
{
    constexpr int ONE_SECOND = 1000;
    m_timer->setInterval(ONE_SECOND);
    m_timer->setSingleShot(false);
    connect(m_timer.get(), &QTimer::timeout, this, &SystemInfo::timerShot);
    m_timer->start();
}

SystemInfo::~SystemInfo()
{
    m_timer->stop();
}

quint64 SystemInfo::getMaximumRam() const
{
    return m_maximumRam;
}

quint64 SystemInfo::getFreeRam() const
{
    return m_freeRam;
}

quint64 SystemInfo::getUsedRam() const
{
    return m_usedRam;
}

void SystemInfo::timerShot()
{
    m_freeRam = 0;
    m_usedRam = 0;
}

} // namespace TEKLUVA
