#include "globals/settings/SettingsLock_p.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSysInfo>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace TEKLUVA {

namespace fs = std::filesystem;

using std::chrono::milliseconds;
using System::FileHandle;
using System::FileKind;
using System::FileStatus;

namespace {

/// How long a lock file may be there without being locked: from its making to its locking, and from its
/// unlocking to its removal.
constexpr milliseconds UNLOCKED_TIME{400};
/// After which QLockFile takes over the lock of another host, too.
constexpr qint64 STALE_MILLISECONDS = 30'000;
/// A holder that is killed changes nothing that could be waited for.
constexpr milliseconds LONGEST_WAIT{100};

/// \name Results of one try
/// @{
constexpr std::errc HELD = std::errc::device_or_resource_busy;
constexpr std::errc CHANGED = std::errc::resource_unavailable_try_again;
/// @}

QByteArray hostName()
{
    static const QByteArray NAME = QSysInfo::machineHostName().toLocal8Bit();
    return NAME;
}

/// What QLockFile writes into a lock file, and looks for there: process, program, host name, host and boot.
QByteArray textOfOurs()
{
    static const QByteArray HOST = QSysInfo::machineUniqueId() + '\n' + QSysInfo::bootUniqueId() + '\n';
    // Asked anew each time, because a forked process is another one.
    std::error_code unknown;
    const fs::path program = fs::read_symlink("/proc/self/exe", unknown);
    return QByteArray::number(QCoreApplication::applicationPid()) + '\n'
           + QByteArray::fromStdString(program.filename().string()) + '\n' + hostName() + '\n' + HOST;
}

QByteArray textIn(const FileHandle& file, std::error_code& error)
{
    std::array<char, 4096> text; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next call
    const qint64 size = file.readAt(text.data(), qint64(text.size()), 0, error);
    return {text.data(), static_cast<int>(size)};
}

/// Whether a process of another host may hold it, whose lock the system need not know.
bool isForeign(const QByteArray& text, const FileStatus& status)
{
    constexpr qint64 NANOSECONDS = 1'000'000;
    const qint64 age = QDateTime::currentMSecsSinceEpoch() - status.modified / NANOSECONDS;
    const QByteArray host = text.split('\n').value(2);
    return !host.isEmpty() && host != hostName() && std::abs(age) <= STALE_MILLISECONDS;
}

bool isSameFile(const FileStatus& one, const FileStatus& other)
{
    return one.device == other.device && one.inode == other.inode;
}

} // namespace

SettingsLock::SettingsLock(const QString& settingsFile, milliseconds patience)
    : m_path(System::nativePath(settingsFile + QLatin1String(".lock")))
    , m_error(acquire(patience))
{
}

SettingsLock::~SettingsLock()
{
    release();
}

QString SettingsLock::reason() const
{
    return m_error == HELD ? QStringLiteral("another process holds its lock") : System::messageOf(m_error);
}

std::error_code SettingsLock::acquire(milliseconds patience)
{
    const auto end = Clock::now() + patience;
    for (;;) {
        std::error_code error = create();
        if (error != std::errc::file_exists && error != HELD && error != CHANGED)
            return error;
        // Before the next look, so that no change is missed.
        const System::FileWatch watch(m_path);
        error = takeOver();
        if (error != HELD && error != CHANGED)
            return error;
        const auto left = std::chrono::duration_cast<milliseconds>(end - Clock::now());
        if (left <= milliseconds(0))
            return std::make_error_code(HELD);
        if (error == HELD)
            watch.wait(std::min(left, LONGEST_WAIT));
    }
}

std::error_code SettingsLock::create()
{
    std::error_code error;
    FileHandle file = FileHandle::create(m_path, error);
    return error ? error : claim(std::move(file), {});
}

std::error_code SettingsLock::takeOver()
{
    std::error_code error;
    const FileStatus status = System::linkStatusOf(m_path, error);
    if (error)
        return std::make_error_code(CHANGED); // it has just been removed
    if (!isSameFile(status, m_seen)) {
        m_seen = status;
        m_seenSince = Clock::now();
    }
    if (Clock::now() - m_seenSince < UNLOCKED_TIME)
        return std::make_error_code(HELD);
    if (status.kind != FileKind::Regular) {
        fs::remove(m_path, error); // a folder only when it is empty
        return error ? error : std::make_error_code(CHANGED);
    }
    FileHandle file = FileHandle::openForUpdate(m_path, error);
    const QByteArray text = error ? QByteArray() : textIn(file, error);
    if (error || isForeign(text, status))
        return error ? error : std::make_error_code(HELD);
    return claim(std::move(file), text);
}

/// Makes the lock file ours, unless somebody else has done so since it was made or found with \p text.
std::error_code SettingsLock::claim(FileHandle file, const QByteArray& text)
{
    // Not all file systems can lock. QLockFile goes on there, too.
    std::error_code error = file.tryLock();
    if (error == std::errc::operation_would_block)
        return std::make_error_code(HELD);
    const FileStatus status = file.status(error);
    if (error || !isSameFile(status, System::linkStatusOf(m_path, error)) || textIn(file, error) != text
        || error)
        return std::make_error_code(CHANGED);
    m_file = std::move(file);
    const QByteArray ours = textOfOurs();
    error = m_file.writeAt(ours.constData(), ours.size(), 0);
    if (!error)
        error = m_file.setSize(ours.size());
    if (error)
        release();
    return error;
}

void SettingsLock::release()
{
    if (!m_file.isOpen())
        return;
    // Before it is closed, so that nobody takes over what is about to vanish.
    std::error_code ignored;
    fs::remove(m_path, ignored);
    m_file = {};
}

} // namespace TEKLUVA
