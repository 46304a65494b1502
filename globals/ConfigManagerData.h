#pragma once

#include "globals/globals_export.h"

#include <QMap>
#include <QString>

#include <memory>

namespace TEKLUVA {

/// The configuration values that live in memory only. Thread-safe: each access holds the record's own lock,
/// which is never held together with another one.
class GLOBALS_EXPORT ConfigManagerData
{
    Q_DISABLE_COPY(ConfigManagerData)

public:
    ConfigManagerData();
    ~ConfigManagerData();

    /// Milliseconds between two automatic saves.
    unsigned int getAutoSaveIntervall() const;
    void setAutoSaveIntervall(unsigned int milliseconds);

    bool getForceNaviationState() const;
    void setForceNavigationState(bool force);

    /// Seconds from the local clock to the server's clock.
    int getServerTimeDiff() const;
    void setServerTimeDiff(int seconds);

    /// True once the server's time is known.
    bool getServerTimeState() const;
    void setServerTimeState(bool known);

    QString getVersion() const;
    void setVersion(const QString& version);
    bool hasVersion() const;

    QString getDisplayVersion() const;
    void setDisplayVersion(const QString& version);
    bool hasDisplayVersion() const;

    /// Family names of the application's own fonts, each with its font id.
    QMap<QString, int> getSystemFontMap() const;
    void setSystemFontMap(const QMap<QString, int>& fonts);
    /// False when \p family has an id already, which it keeps.
    bool addFontFamily(const QString& family, int id);
    /// Removes the families of \p id and unloads that font, in the calling thread. False when there is no
    /// such family or the font could not be unloaded.
    bool removeFont(int id);
    bool hasFont(const QString& family) const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
