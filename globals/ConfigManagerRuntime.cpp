#include "globals/ConfigManager.h"

namespace TEKLUVA {

QDateTime ConfigManager::getCurrentServerTime() const
{
    const QDateTime now = QDateTime::currentDateTime();
    return m_data.getServerTimeState() ? syncToServerTime(now) : now;
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
