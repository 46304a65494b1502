#include "globals/AtomicFile.h"
#include "globals/ConfigManager.h"
#include "globals/SettingsKeys.h"
#include "globals/configuration/PathRegistry_p.h"
#include "globals/logs/ActiveLog_p.h"

#include <QFileInfo>

namespace TEKLUVA {

QString ConfigManager::getPath(const E_PathType& type) const
{
    return resolvePath(
        type, [this](const QString& key) { return getSetting(SettingsKeys::USER_PATHS, key).toString(); });
}

bool ConfigManager::setPath(const E_PathType& type, const QString& path)
{
    if (path.isEmpty())
        resetPath(type);
    const QString key = overrideKey(type);
    if (key.isEmpty()) {
        logError("The given path type is unsupported to be changed yet.");
        return false;
    }
    // An empty path is written as well: getPath() reads an empty value as not set.
    setSetting(SettingsKeys::USER_PATHS, key, path);
    const QString doubt = overrideDoubt(type, path);
    if (!doubt.isEmpty())
        logWarning(doubt);
    return true;
}

void ConfigManager::resetPath(const E_PathType& type)
{
    const QString key = overrideKey(type);
    if (key.isEmpty())
        logError("The given path type is not be supported to be reseted yet.");
    else
        removeSetting(SettingsKeys::USER_PATHS, key);
}

QString ConfigManager::getDirName(const E_PathType& type) const
{
    const QString name = fixedDirName(type);
    // A path ends in "/", so that its file name is empty.
    return name.isEmpty() ? QFileInfo(getPath(type)).fileName() : name;
}

QString ConfigManager::storageProblem() const
{
    const QString folder = getPath(E_PT_SETTINGS);
    AtomicFile probe(folder + SettingsKeys::FILE_NAME); // never committed: nothing is left of it
    if (probe.write("?"))
        return QString();
    return tr("In %1 kann nichts gespeichert werden: %2").arg(folder, probe.error());
}

} // namespace TEKLUVA
