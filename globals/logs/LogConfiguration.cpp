#include "globals/logs/LogConfiguration_p.h"

#include "globals/ConfigManager.h" // upwards: see the header

namespace TEKLUVA::LogConfiguration {

std::string folder()
{
    return ConfigManager::getInstance()->getPath(E_PT_LOGS).toStdString();
}

qint64 currentMSecs()
{
    return ConfigManager::getInstance()->getCurrentServerMSecs();
}

} // namespace TEKLUVA::LogConfiguration
