#include "globals/SettingsFile_p.h"

#include <QDataStream>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QThread>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace TEKLUVA {

namespace {

/// The longest escapes of Qt's INI writer turn one byte into "\xff" and the two bytes of a character into
/// "\xffff". A file edited by hand may hold bytes that are not escaped yet.
constexpr qint64 MOST_BYTES_PER_BYTE = 4;
/// A new section head, line ends and the file system's own block.
constexpr qint64 MARGIN = 8192;

class FileDescriptor
{
    Q_DISABLE_COPY(FileDescriptor)

public:
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~FileDescriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    operator int() const { return m_descriptor; }

private:
    const int m_descriptor;
};

/// A file in \p folder that has no name, so that nothing is left behind whatever happens.
int openUnnamed(const QString& folder)
{
    const int descriptor =
        ::open(QFile::encodeName(folder).constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (descriptor >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL))
        return descriptor;
    QByteArray name = QFile::encodeName(folder + QLatin1String("/settings.XXXXXX"));
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0)
        ::unlink(name.constData());
    return named;
}

bool saysFull(int error)
{
    return error == ENOSPC || error == EDQUOT || error == EFBIG || error == EIO;
}

/// Whether \p size bytes fit beside what is in \p folder. In doubt yes: other failures, such as a folder that
/// may not be written, are met by Qt without harm to the file.
bool hasRoom(const QString& folder, qint64 size)
{
    QDir().mkpath(folder);
    const FileDescriptor file(openUnnamed(folder));
    if (file < 0)
        return !saysFull(errno);
    int error = 0;
    do {
        error = ::posix_fallocate(file, 0, size);
    } while (error == EINTR);
    return !saysFull(error);
}

/// A lock file may be found empty in the moment between its making and its filling; that moment passes.
bool staysUnreadable(const QLockFile& lock)
{
    qint64 process = 0;
    QString host;
    QString application;
    QThread::msleep(50);
    return !lock.getLockInfo(&process, &host, &application);
}

bool isAbandoned(const QLockFile& lock)
{
    qint64 process = 0;
    QString host;
    QString application;
    if (!lock.getLockInfo(&process, &host, &application))
        return staysUnreadable(lock);
    const bool ours = host.isEmpty() || host == QSysInfo::machineHostName();
    return ours && ::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
}

void removeAbandonedLock(const QString& settingsFile)
{
    const QString name = settingsFile + QLatin1String(".lock");
    if (!QFile::exists(name))
        return;
    QLockFile lock(name);
    if (isAbandoned(lock))
        lock.removeStaleLockFile(); // only if nobody holds it
}

/// Stores that could not be destroyed without harm, see SettingsFile::release(). Reachable, so that they do
/// not count as leaked, and never destroyed.
void keepUntilExit(SettingsFile* store)
{
    static auto* kept = new QList<SettingsFile*>;
    kept->append(store);
}

} // namespace

SettingsFile::SettingsFile(const QString& path, QSettings::Format format, QObject* parent)
    : QSettings(path, format, parent)
{
    // A parent destroys its children right after this signal; a store that must not be destroyed leaves
    // first.
    if (parent)
        connect(parent, &QObject::destroyed, this, [this] { setAsideUnlessWritten(); });
}

bool SettingsFile::writeBack(qint64 addedBytes)
{
    m_pending = true;
    m_pendingBytes += addedBytes;
    const QFileInfo file(fileName());
    if (!hasRoom(file.absolutePath(), MOST_BYTES_PER_BYTE * file.size() + m_pendingBytes + MARGIN))
        return false;
    removeAbandonedLock(fileName());
    sync();
    if (status() != NoError && stillFails())
        return false;
    m_pending = false;
    m_pendingBytes = 0;
    return true;
}

void SettingsFile::refresh()
{
    if (m_pending)
        writeBack(0);
    else
        sync();
}

void SettingsFile::release(SettingsFile* store)
{
    if (!store->setAsideUnlessWritten())
        store->deleteLater();
}

qint64 SettingsFile::sizeInFile(const QString& group, const QString& key, const QVariant& value)
{
    QByteArray serialised;
    QDataStream stream(&serialised, QIODevice::WriteOnly);
    stream << group << key << value;
    return MOST_BYTES_PER_BYTE * serialised.size();
}

bool SettingsFile::event(QEvent* event)
{
    return event->type() == QEvent::UpdateRequest || QSettings::event(event);
}

bool SettingsFile::stillFails() const
{
    // A store reports the first error it ever met. A new one over the same file shares its pending changes,
    // so that its first error is that of today.
    QSettings today(fileName(), format());
    today.sync();
    return today.status() == AccessError;
}

bool SettingsFile::setAsideUnlessWritten()
{
    if (!m_pending || writeBack(0))
        return false;
    setParent(nullptr);
    keepUntilExit(this);
    return true;
}

} // namespace TEKLUVA
