#pragma once

#include "globals/system/System_p.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <optional>

namespace TEKLUVA {

/// The right to write a settings file. It is the lock of QLockFile, "settings.ini.lock", so that QSettings in
/// other processes waits for us and we for it.
///
/// Whoever holds it keeps the lock file locked by the system, which ends with the process. So a lock file
/// that stays the same, and unlocked, for 0.4 seconds is one that was left behind, whatever it says; for one
/// that names an ended process of this host 0.02 seconds are enough. It is taken over and not removed: who
/// removes one may hit another that somebody has just made in its place.
class SettingsLock
{
    Q_DISABLE_COPY(SettingsLock)

public:
    /// Waits at most \p patience for a process that holds the lock.
    SettingsLock(const QString& settingsFile, std::chrono::milliseconds patience);
    ~SettingsLock();

    bool isHeld() const { return m_file.isOpen(); }
    /// Why it is not held.
    QString reason() const;

private:
    using Clock = std::chrono::steady_clock;

    /// How long a lock file may be there without being locked: from its making to its locking, and from its
    /// unlocking to its removal.
    static constexpr std::chrono::milliseconds UNLOCKED_TIME{400};

    std::error_code acquire(std::chrono::milliseconds patience);
    std::error_code create();
    std::error_code takeOver();
    std::error_code removeForeign();
    bool isUnlockedForLong();
    std::error_code claim(System::FileHandle file, const QByteArray& text);
    void release();

    const System::Path m_path;
    const QByteArray m_ours;   ///< of our lock file; made first, so that none stays behind for want of memory
    System::FileHandle m_file; ///< open while the lock is held
    /// \name A lock file that may have been left behind
    /// @{
    System::FileStatus m_found;
    std::optional<Clock::time_point> m_unlockedSince;         ///< none while it is locked
    std::chrono::milliseconds m_unlockedTime = UNLOCKED_TIME; ///< after which it is taken over
    /// @}
    std::error_code m_error;
};

} // namespace TEKLUVA
