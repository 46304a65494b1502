#pragma once

#include "globals/ConfigManager.h"

namespace TEKLUVA {

/// What the sources of the configuration manager share.
class GLOBALS_NO_EXPORT ConfigManager::Private
{
public:
    /// By the server's clock once that is known, in milliseconds since the epoch.
    qint64 currentMSecs() const;

    LastRun lastRun() const;
    /// A sign of life, to be written now.
    QVariantMap lifeTimeRecord() const;
    /// The same with an error code.
    QVariantMap errorRecord(unsigned int code) const;

    ConfigManagerData data;
    Settings settings;
};

} // namespace TEKLUVA
