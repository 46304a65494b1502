#include "globals/settings/SettingsGuard_p.h"

#include "globals/WholeFile.h"
#include "globals/system/Descriptor_p.h"

#include <QDataStream>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QThread>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TEKLUVA::SettingsGuard {

namespace {

/// The longest escapes of Qt's INI writer turn one byte into "\xff" and the two bytes of a character into
/// "\xffff". A file edited by hand may hold bytes that are not escaped yet.
constexpr qint64 MOST_BYTES_PER_BYTE = 4;
/// A new section head, line ends and the file system's own block.
constexpr qint64 MARGIN = 8192;

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

/// Writes \p size zero bytes; an error number, or 0. Not posix_fallocate(), which costs twice as much: it has
/// the place of the bytes chosen at once. For what is written the room is counted at once, too, but its place
/// would be chosen later, when this file is gone.
int fill(int file, qint64 size)
{
    static constexpr std::array<char, 16384> ZEROS{};
    for (qint64 done = 0; done < size;) {
        const auto part = std::min<qint64>(size - done, ZEROS.size());
        const ssize_t written = ::pwrite(file, ZEROS.data(), static_cast<std::size_t>(part), done);
        if (written < 0 && errno != EINTR)
            return errno;
        done += std::max<ssize_t>(written, 0);
    }
    return 0;
}

/// An error of the disk itself, too: to write is what ruins the file then.
bool forbidsWriting(int error)
{
    return error == ENOSPC || error == EDQUOT || error == EFBIG || error == EIO;
}

bool isUnreadable(const QLockFile& lock)
{
    qint64 process = 0;
    QString host;
    QString application;
    return !lock.getLockInfo(&process, &host, &application);
}

bool isSoundTime(const QDateTime& time)
{
    return time.timeSpec() != Qt::TimeZone || time.timeZone().isValid();
}

template <typename Values>
bool areSound(const Values& values)
{
    return std::all_of(values.begin(), values.end(), &isSound);
}

/// Where Qt writes: a settings file that is a link is replaced where the link leads.
QString placeOf(const QString& settingsFile)
{
    const QFileInfo info(settingsFile);
    QString existing = info.canonicalFilePath();
    if (!existing.isEmpty())
        return existing;
    return info.isSymLink() ? info.symLinkTarget() : settingsFile;
}

} // namespace

bool hasRoom(const QString& settingsFile, qint64 addedBytes)
{
    const QFileInfo info(placeOf(settingsFile));
    const QString folder = info.absolutePath();
    QDir().mkpath(folder);
    const Descriptor file(openUnnamed(folder));
    if (!file.isOpen())
        return !forbidsWriting(errno);
    return !forbidsWriting(fill(file.get(), MOST_BYTES_PER_BYTE * info.size() + addedBytes + MARGIN));
}

qint64 sizeInFile(const QString& group, const QString& key, const QVariant& value)
{
    QByteArray serialised;
    QDataStream stream(&serialised, QIODevice::WriteOnly);
    stream << group << key << value;
    return MOST_BYTES_PER_BYTE * serialised.size();
}

void removeAbandonedLock(const QString& settingsFile)
{
    const QString name = settingsFile + QLatin1String(".lock");
    if (!QFile::exists(name))
        return;
    QLockFile lock(name);
    if (!isUnreadable(lock))
        return;
    // It may have been found between its making and its filling; that moment passes.
    QThread::msleep(50);
    if (isUnreadable(lock))
        lock.removeStaleLockFile(); // only if nobody holds it
}

bool isSound(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::QDateTime:
        return isSoundTime(value.toDateTime());
    case QMetaType::QVariantList:
        return areSound(value.toList());
    case QMetaType::QVariantMap:
        return areSound(value.toMap());
    case QMetaType::QVariantHash:
        return areSound(value.toHash());
    default:
        return true;
    }
}

std::optional<QByteArray> contentOf(const QString& settingsFile)
{
    if (!QFileInfo::exists(settingsFile))
        return QByteArray();
    return readWhole(settingsFile);
}

bool hasKeys(const QByteArray& content)
{
    const QList<QByteArray> lines = content.split('\n');
    return std::any_of(lines.begin(), lines.end(), [](const QByteArray& line) {
        const QByteArray text = line.trimmed();
        return text.indexOf('=') > 0 && text[0] != ';' && text[0] != '#';
    });
}

void makeNewer(const QString& settingsFile)
{
    ::utimensat(AT_FDCWD, QFile::encodeName(settingsFile).constData(), nullptr, 0);
}

} // namespace TEKLUVA::SettingsGuard
