#include "globals/logs/LogConfiguration_p.h"

#include "globals/ConfigManager.h" // upwards: see the header

#include <QCoreApplication>
#include <QDateTime>

namespace TEKLUVA::LogConfiguration {

std::string folder()
{
    return ConfigManager::getInstance()->getPath(E_PT_LOGS).toStdString();
}

qint64 currentMSecs()
{
    // At the end of the process nobody may make a second configuration manager.
    if (!ConfigManager::hasInstance() && !QCoreApplication::instance())
        return QDateTime::currentMSecsSinceEpoch();
    return ConfigManager::getInstance()->getCurrentServerMSecs();
}

} // namespace TEKLUVA::LogConfiguration
