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

/// How long a lock file may have no holder to be seen: the time between its making and its filling.
constexpr milliseconds FILLING_TIME{400};
/// After which QLockFile takes any lock whose file the system does not hold locked, of other hosts, too.
constexpr qint64 STALE_MILLISECONDS = 30'000;
/// A holder that is killed changes nothing that could be waited for.
constexpr milliseconds LONGEST_WAIT{100};

/// \name Results of one try
/// @{
constexpr std::errc HELD = std::errc::device_or_resource_busy;
constexpr std::errc CHANGED = std::errc::resource_unavailable_try_again;
/// @}

QByteArray programOf(const QByteArray& process, std::error_code& error)
{
    const fs::path program = fs::read_symlink("/proc/" + process.toStdString() + "/exe", error);
    return QByteArray::fromStdString(program.filename().string());
}

/// What QLockFile writes into a lock file: process, program, host name, host and boot.
struct Holder
{
    QByteArray process;
    QByteArray program;
    QByteArray hostName;
    QByteArray host;
    QByteArray boot;

    static Holder here();
    static Holder from(const QByteArray& text);
    QByteArray text() const
    {
        return process + '\n' + program + '\n' + hostName + '\n' + host + '\n' + boot + '\n';
    }

    /// False while a lock file is empty or half written.
    bool isComplete() const { return process.toLongLong() > 0 && !hostName.isEmpty(); }
    /// Only a process of this host can be known to be gone.
    bool isGone() const;
};

Holder Holder::here()
{
    static const QByteArray HOST_NAME = QSysInfo::machineHostName().toLocal8Bit();
    static const QByteArray HOST = QSysInfo::machineUniqueId();
    static const QByteArray BOOT = QSysInfo::bootUniqueId();
    // Asked anew each time, because a forked process is another one.
    std::error_code unknown;
    return {QByteArray::number(QCoreApplication::applicationPid()), programOf("self", unknown), HOST_NAME,
            HOST, BOOT};
}

Holder Holder::from(const QByteArray& text)
{
    const QList<QByteArray> lines = text.left(text.lastIndexOf('\n')).split('\n');
    return {lines.value(0), lines.value(1), lines.value(2), lines.value(3), lines.value(4)};
}

bool Holder::isGone() const
{
    const Holder here = Holder::here();
    const bool isHere = host.isEmpty() || here.host.isEmpty() ? hostName == here.hostName : host == here.host;
    if (!isHere)
        return false;
    if (!boot.isEmpty() && boot != here.boot)
        return true;
    std::error_code error;
    const QByteArray running = programOf(process, error);
    if (!error)
        return !program.isEmpty() && running != program; // the number was given to another program
    if (here.program.isEmpty())
        return !System::isProcessRunning(process.toLongLong());
    return error == std::errc::no_such_file_or_directory; // also when killed and not yet buried
}

enum class Verdict { Held, Doubtful, Abandoned };

Verdict verdictOn(const QByteArray& text, const FileStatus& status)
{
    constexpr qint64 NANOSECONDS = 1'000'000;
    const Holder holder = Holder::from(text);
    const qint64 age = QDateTime::currentMSecsSinceEpoch() - status.modified / NANOSECONDS;
    if (std::abs(age) > STALE_MILLISECONDS || (holder.isComplete() && holder.isGone()))
        return Verdict::Abandoned;
    return holder.isComplete() ? Verdict::Held : Verdict::Doubtful;
}

QByteArray textIn(const FileHandle& file, std::error_code& error)
{
    std::array<char, 4096> text; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next call
    const qint64 size = file.readAt(text.data(), qint64(text.size()), 0, error);
    return {text.data(), static_cast<int>(size)};
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

void SettingsLock::release()
{
    if (!m_file.isOpen())
        return;
    // Before it is closed, so that nobody takes over what is about to vanish.
    std::error_code ignored;
    fs::remove(m_path, ignored);
    m_file = {};
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
    FileHandle file = FileHandle::openForUpdate(m_path, error);
    if (error == std::errc::no_such_file_or_directory)
        return std::make_error_code(CHANGED);
    if (error == std::errc::permission_denied)
        return error;
    const FileStatus status = error ? System::statusOf(m_path, error) : file.status(error);
    if (!file.isOpen() || status.kind != FileKind::Regular)
        return replaceForeign(status);
    const QByteArray text = textIn(file, error);
    if (error)
        return error;
    const Verdict verdict = verdictOn(text, status);
    if (verdict == Verdict::Held || (verdict == Verdict::Doubtful && !isDoubtedLongEnough(status)))
        return std::make_error_code(HELD);
    return claim(std::move(file), text);
}

/// What is no file at all. A folder only when it is empty.
std::error_code SettingsLock::replaceForeign(const FileStatus& status)
{
    if (!isDoubtedLongEnough(status))
        return std::make_error_code(HELD);
    std::error_code error;
    fs::remove(m_path, error);
    return error ? error : std::make_error_code(CHANGED);
}

/// Makes the lock file ours if nobody has done so since it was found with \p text.
std::error_code SettingsLock::claim(FileHandle file, const QByteArray& text)
{
    // Not all file systems can lock. QLockFile goes on there, too.
    std::error_code error = file.tryLock();
    if (error == std::errc::operation_would_block)
        return std::make_error_code(HELD);
    const FileStatus status = file.status(error);
    if (error || textIn(file, error) != text || error)
        return std::make_error_code(HELD);
    if (!isSameFile(status, System::statusOf(m_path, error)))
        return std::make_error_code(CHANGED);
    const QByteArray ours = Holder::here().text();
    error = file.writeAt(ours.constData(), ours.size(), 0);
    if (!error)
        error = file.setSize(ours.size());
    m_file = std::move(file);
    if (error)
        release();
    return error;
}

/// Whether there was no sign of a holder for longer than it takes to make a lock file.
bool SettingsLock::isDoubtedLongEnough(const FileStatus& status)
{
    if (!isSameFile(status, m_doubted)) {
        m_doubted = status;
        m_doubtedSince = Clock::now();
    }
    return Clock::now() - m_doubtedSince >= FILLING_TIME;
}

} // namespace TEKLUVA
