#pragma once

#include "globals/LockedRecord.h"
#include "globals/globals_export.h"

#include <QMap>
#include <QString>

namespace TEKLUVA {

/// The configuration values that live in memory only. Thread-safe: each access holds the record's own lock,
/// which is never held together with another one.
class GLOBALS_EXPORT ConfigManagerData : private LockedRecord
{
    Q_DISABLE_COPY(ConfigManagerData)

public:
    ConfigManagerData() = default;

    /// Milliseconds between two automatic saves.
    unsigned int getAutoSaveIntervall() const { return get(m_autoSaveInterval); }
    void setAutoSaveIntervall(unsigned int milliseconds) { set(m_autoSaveInterval, milliseconds); }

    bool getForceNaviationState() const { return get(m_forceNavigation); }
    void setForceNavigationState(bool force) { set(m_forceNavigation, force); }

    /// Seconds from the local clock to the server's clock.
    int getServerTimeDiff() const { return get(m_serverTimeDiff); }
    void setServerTimeDiff(int seconds) { set(m_serverTimeDiff, seconds); }

    /// True once the server's time is known.
    bool getServerTimeState() const { return get(m_serverTimeState); }
    void setServerTimeState(bool known) { set(m_serverTimeState, known); }

    QString getVersion() const { return get(m_version); }
    void setVersion(const QString& version) { set(m_version, version); }
    bool hasVersion() const { return !getVersion().isEmpty(); }

    QString getDisplayVersion() const { return get(m_displayVersion); }
    void setDisplayVersion(const QString& version) { set(m_displayVersion, version); }
    bool hasDisplayVersion() const { return !getDisplayVersion().isEmpty(); }

    /// Family names of the application's own fonts, each with its font id.
    QMap<QString, int> getSystemFontMap() const { return get(m_systemFontMap); }
    void setSystemFontMap(const QMap<QString, int>& fonts) { set(m_systemFontMap, fonts); }
    /// False when \p family has an id already, which it keeps.
    bool addFontFamily(const QString& family, int id);
    /// Removes the families of \p id and unloads that font, in the calling thread. False when there is no
    /// such family or the font could not be unloaded.
    bool removeFont(int id);
    bool hasFont(const QString& family) const;

private:
    /// False when no family has \p id.
    bool unregister(int id);

    unsigned int m_autoSaveInterval = 0;
    bool m_forceNavigation = false;
    int m_serverTimeDiff = 0;
    bool m_serverTimeState = false;
    QString m_version;
    QString m_displayVersion;
    QMap<QString, int> m_systemFontMap;
};

} // namespace TEKLUVA
