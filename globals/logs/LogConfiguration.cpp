#include "globals/logs/LogConfiguration_p.h"

#include "globals/ConfigManager.h" // upwards: see the header

namespace TEKLUVA {

std::string LogConfiguration::folder()
{
    return ConfigManager::getInstance()->getPath(E_PT_LOGS).toStdString();
}

qint64 LogConfiguration::currentMSecs()
{
    return ConfigManager::getInstance()->getCurrentServerMSecs();
}

} // namespace TEKLUVA
