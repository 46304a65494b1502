#pragma once

#include "globals/ConfigManager.h"

#include <atomic>

namespace TEKLUVA {

/// What an application decides before the first getInstance().
struct StartOptions
{
    std::atomic<bool> recordsRun{true};
    std::atomic<bool> movesOlderData{true};
};
StartOptions& startOptions();

/// What the sources of the configuration manager share.
class GLOBALS_NO_EXPORT ConfigManager::Private
{
public:
    /// By the server's clock once that is known, in milliseconds since the epoch.
    qint64 currentMSecs() const;

    /// What the settings say about the last run.
    QVariantMap runRecord() const;
    LastRun lastRun() const;
    /// Writes \p values into this record, unless the record is left to another process.
    void record(const QVariantMap& values);
    /// A sign of life, to be written now.
    QVariantMap lifeTimeRecord() const;
    /// The same with an error code.
    QVariantMap errorRecord(unsigned int code) const;

    ConfigManagerData data;
    Settings settings;
    MigrationReport migration;
};

} // namespace TEKLUVA
