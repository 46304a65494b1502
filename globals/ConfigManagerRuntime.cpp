#include "globals/ConfigManager.h"

namespace TEKLUVA {

QDateTime ConfigManager::getCurrentServerTime() const
{
    return QDateTime::fromMSecsSinceEpoch(getCurrentServerMSecs());
}

qint64 ConfigManager::getCurrentServerMSecs() const
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    return m_data.getServerTimeState() ? now + qint64(1000) * m_data.getServerTimeDiff() : now;
}

QDateTime ConfigManager::syncToServerTime(const QDateTime& time) const
{
    return time.addSecs(m_data.getServerTimeDiff());
}

void ConfigManager::updateLifeTime()
{
    const QString group = QStringLiteral("Application");
    setSetting(group, QStringLiteral("last_life_time"), getCurrentServerTime());
    setSetting(group, QStringLiteral("time_sync"), m_data.getServerTimeState());
}

} // namespace TEKLUVA
