#include "globals/ConfigManagerData.h"

#include "globals/foundation/LockedRecord_p.h"

#include <QFontDatabase>

#include <iterator>

namespace TEKLUVA {

class GLOBALS_NO_EXPORT ConfigManagerData::Private : public LockedRecord
{
public:
    /// False when no family has \p id.
    bool unregister(int id);

    unsigned int autoSaveInterval = 0;
    bool forceNavigation = false;
    int serverTimeDiff = 0;
    bool serverTimeState = false;
    QString version;
    QString displayVersion;
    QMap<QString, int> systemFontMap;
};

bool ConfigManagerData::Private::unregister(int id)
{
    const QMutexLocker lock(mutex());
    const auto before = systemFontMap.size();
    // A file with several families has one id for all of them.
    for (auto font = systemFontMap.begin(); font != systemFontMap.end();)
        font = *font == id ? systemFontMap.erase(font) : std::next(font);
    return systemFontMap.size() < before;
}

ConfigManagerData::ConfigManagerData()
    : d(std::make_unique<Private>())
{
}

ConfigManagerData::~ConfigManagerData() = default;

unsigned int ConfigManagerData::getAutoSaveIntervall() const
{
    return d->get(d->autoSaveInterval);
}

void ConfigManagerData::setAutoSaveIntervall(unsigned int milliseconds)
{
    d->set(d->autoSaveInterval, milliseconds);
}

bool ConfigManagerData::getForceNaviationState() const
{
    return d->get(d->forceNavigation);
}

void ConfigManagerData::setForceNavigationState(bool force)
{
    d->set(d->forceNavigation, force);
}

int ConfigManagerData::getServerTimeDiff() const
{
    return d->get(d->serverTimeDiff);
}

void ConfigManagerData::setServerTimeDiff(int seconds)
{
    d->set(d->serverTimeDiff, seconds);
}

bool ConfigManagerData::getServerTimeState() const
{
    return d->get(d->serverTimeState);
}

void ConfigManagerData::setServerTimeState(bool known)
{
    d->set(d->serverTimeState, known);
}

QString ConfigManagerData::getVersion() const
{
    return d->get(d->version);
}

void ConfigManagerData::setVersion(const QString& version)
{
    d->set(d->version, version);
}

bool ConfigManagerData::hasVersion() const
{
    return !getVersion().isEmpty();
}

QString ConfigManagerData::getDisplayVersion() const
{
    return d->get(d->displayVersion);
}

void ConfigManagerData::setDisplayVersion(const QString& version)
{
    d->set(d->displayVersion, version);
}

bool ConfigManagerData::hasDisplayVersion() const
{
    return !getDisplayVersion().isEmpty();
}

QMap<QString, int> ConfigManagerData::getSystemFontMap() const
{
    return d->get(d->systemFontMap);
}

void ConfigManagerData::setSystemFontMap(const QMap<QString, int>& fonts)
{
    d->set(d->systemFontMap, fonts);
}

bool ConfigManagerData::addFontFamily(const QString& family, int id)
{
    const QMutexLocker lock(d->mutex());
    if (d->systemFontMap.contains(family))
        return false;
    d->systemFontMap.insert(family, id);
    return true;
}

bool ConfigManagerData::removeFont(int id)
{
    const bool wasRegistered = d->unregister(id);
    if (!wasRegistered)
        return false;
    // The database has a lock of its own, and so it is called without ours.
    return QFontDatabase::removeApplicationFont(id);
}

bool ConfigManagerData::hasFont(const QString& family) const
{
    const QMutexLocker lock(d->mutex());
    return d->systemFontMap.contains(family);
}

} // namespace TEKLUVA
