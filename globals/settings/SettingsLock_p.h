#pragma once

#include "globals/system/System_p.h"

#include <QByteArray>
#include <QString>

#include <chrono>

namespace TEKLUVA {

/// The right to write a settings file. It is the lock of QLockFile, "settings.ini.lock", so that QSettings in
/// other processes waits for us and we for it.
///
/// Whoever holds it is known by the text in the lock file, and by the system's own lock on that file, which
/// ends with its process. A lock file that is left behind is taken over and never removed by others than its
/// holder: so nobody removes the one that somebody else has just made in its place.
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

    std::error_code acquire(std::chrono::milliseconds patience);
    std::error_code create();
    std::error_code takeOver();
    std::error_code replaceForeign(const System::FileStatus& status);
    std::error_code claim(System::FileHandle file, const QByteArray& text);
    void release();
    bool isDoubtedLongEnough(const System::FileStatus& status);

    const System::Path m_path;
    System::FileHandle m_file; ///< open while the lock is held
    /// \name A lock file that may be somebody's
    /// @{
    System::FileStatus m_doubted;
    Clock::time_point m_doubtedSince;
    /// @}
    std::error_code m_error;
};

} // namespace TEKLUVA
