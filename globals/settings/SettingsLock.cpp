#include "globals/settings/SettingsLock_p.h"

#include "globals/system/Process_p.h"

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

/// How long a lock file may be there without being locked when the process that it names has ended. One in
/// another container has a number that means nothing here, and needs a moment between its unlocking and its
/// removal, too.
constexpr milliseconds ENDED_TIME{20};
/// After which QLockFile takes over the lock of another host, too.
constexpr qint64 STALE_MILLISECONDS = 30'000;
/// A holder that is killed changes nothing that could be waited for.
constexpr milliseconds LONGEST_WAIT{100};

/// The result of a try that another one may follow.
constexpr std::errc HELD = std::errc::device_or_resource_busy;

// What is found out once is never destroyed, because static objects of the application write settings, too.
QByteArray hostName()
{
    static const QByteArray& NAME = *new QByteArray(System::encodedName(QSysInfo::machineHostName()));
    return NAME;
}

/// The end of what QLockFile writes into a lock file: host name, host and boot.
QByteArray textOfHost()
{
    static const QByteArray& HOST =
        *new QByteArray(QSysInfo::machineUniqueId() + '\n' + QSysInfo::bootUniqueId() + '\n');
    return hostName() + '\n' + HOST;
}

/// What it writes, and looks for there: process, program and the host.
QByteArray textOfOurs()
{
    // Asked anew each time, because a forked process is another one.
    return QByteArray::number(QCoreApplication::applicationPid()) + '\n'
           + System::encodedName(System::programName()) + '\n' + textOfHost();
}

QByteArray textIn(const FileHandle& file, std::error_code& error)
{
    std::array<char, 4096> text; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next call
    const qint64 size = file.readAt(text.data(), qint64(text.size()), 0, error);
    return {text.data(), static_cast<QByteArray::size_type>(size)};
}

/// Whether a process of another host may hold it, of whose lock the system need not know.
bool isOfOtherHost(const QByteArray& text, const FileStatus& status)
{
    constexpr qint64 MILLISECOND = 1'000'000; // in nanoseconds
    const qint64 age = QDateTime::currentMSecsSinceEpoch() - status.modified / MILLISECOND;
    const QByteArray host = text.split('\n').value(2);
    return !host.isEmpty() && host != hostName() && std::abs(age) <= STALE_MILLISECONDS;
}

/// Whether a process of this boot has written it that exists no more.
bool isOfEndedProcess(const QByteArray& text)
{
    const System::Process writer = {text.left(text.indexOf('\n')).toLongLong(), 0, System::thisBoot()};
    return !writer.boot.isEmpty() && text.endsWith('\n' + textOfHost()) && !System::isRunning(writer);
}

} // namespace

SettingsLock::SettingsLock(const QString& settingsFile, milliseconds patience)
    : m_path(System::nativePath(settingsFile + QLatin1String(".lock")))
    , m_ours(textOfOurs())
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
    const auto isBusy = [](const std::error_code& error) {
        return error == std::errc::file_exists || error == HELD;
    };
    const auto end = Clock::now() + patience;
    std::error_code error = create();
    while (isBusy(error) && Clock::now() < end) {
        const System::FileWatch watch(m_path);
        error = create(); // it may be gone since
        if (isBusy(error))
            error = takeOver();
        if (error == HELD)
            watch.wait(std::min(LONGEST_WAIT, m_unlockedTime));
    }
    return isBusy(error) ? std::make_error_code(HELD) : error;
}

std::error_code SettingsLock::create()
{
    std::error_code error;
    FileHandle file = FileHandle::create(m_path, error);
    return error ? error : claim(std::move(file), {});
}

/// Takes what is in the place of the lock file, once it has been there for a while and nobody had it locked.
std::error_code SettingsLock::takeOver()
{
    std::error_code error;
    const FileStatus status = System::linkStatusOf(m_path, error);
    if (error)
        return std::make_error_code(std::errc::file_exists); // no longer: another try, at once
    const bool isFirstLook = !status.isSameFile(m_found);
    if (isFirstLook) {
        m_found = status;
        m_unlockedSince.reset();
        m_unlockedTime = UNLOCKED_TIME;
    }
    if (status.kind != FileKind::Regular)
        return isUnlockedForLong() ? removeForeign() : std::make_error_code(HELD);
    FileHandle file = FileHandle::openForUpdate(m_path, error);
    const QByteArray text = error ? QByteArray() : textIn(file, error);
    if (error)
        return std::make_error_code(HELD);
    const bool isEnded = isOfEndedProcess(text);
    if (isFirstLook && !isEnded) // its maker may be about to lock it
        return std::make_error_code(HELD);
    const std::error_code result = file.tryLock();
    const bool isLocked = result == std::errc::operation_would_block || isOfOtherHost(text, status);
    // Where the system cannot lock, nothing but the time tells.
    m_unlockedTime = isEnded && !result ? ENDED_TIME : UNLOCKED_TIME;
    if (isLocked)
        m_unlockedSince.reset();
    return !isLocked && isUnlockedForLong() ? claim(std::move(file), text) : std::make_error_code(HELD);
}

bool SettingsLock::isUnlockedForLong()
{
    const auto now = Clock::now();
    m_unlockedSince = m_unlockedSince.value_or(now);
    return now - *m_unlockedSince >= m_unlockedTime;
}

/// What is no file; a folder only when it is empty.
std::error_code SettingsLock::removeForeign()
{
    std::error_code error;
    fs::remove(m_path, error);
    return error ? error : std::make_error_code(std::errc::file_exists);
}

/// Makes the lock file ours, unless somebody else has done so since it was made or found with \p text.
std::error_code SettingsLock::claim(FileHandle file, const QByteArray& text)
{
    // Not all file systems can lock. QLockFile goes on there, too.
    std::error_code error = file.tryLock();
    if (error == std::errc::operation_would_block)
        return std::make_error_code(HELD);
    const FileStatus status = file.status(error);
    const bool isUnchanged = !error && textIn(file, error) == text && !error;
    if (!isUnchanged || !status.isSameFile(System::linkStatusOf(m_path, error)))
        return std::make_error_code(HELD);
    m_file = std::move(file);
    error = m_file.writeAt(m_ours.constData(), m_ours.size(), 0);
    if (!error)
        error = m_file.setSize(m_ours.size());
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
