#include "globals/ActiveLog_p.h"
#include "globals/ConfigManager.h"
#include "globals/PathRegistry_p.h"

#include <QFileInfo>

namespace TEKLUVA {

namespace {

QString userPaths()
{
    return QString::fromLatin1(USER_PATHS_GROUP);
}

} // namespace

QString ConfigManager::getPath(const E_PathType& type) const
{
    return resolvePath(type, [this](const QString& key) { return getSetting(userPaths(), key).toString(); });
}

bool ConfigManager::setPath(const E_PathType& type, const QString& path)
{
    if (path.isEmpty())
        resetPath(type);
    const QString key = overrideKey(type);
    if (key.isEmpty()) {
        logError(std::string("The given path type is unsupported to be changed yet."));
        return false;
    }
    // An empty path is written as well; getPath() takes an empty value for none.
    setSetting(userPaths(), key, path);
    return true;
}

void ConfigManager::resetPath(const E_PathType& type)
{
    const QString key = overrideKey(type);
    if (key.isEmpty())
        logError(std::string("The given path type is not be supported to be reseted yet."));
    else
        removeSetting(userPaths(), key);
}

QString ConfigManager::getDirName(const E_PathType& type) const
{
    const QString name = fixedDirName(type);
    // A path ends in "/", so that its file name is empty.
    return name.isEmpty() ? QFileInfo(getPath(type)).fileName() : name;
}

} // namespace TEKLUVA
