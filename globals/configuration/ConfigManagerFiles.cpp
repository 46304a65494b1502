#include "globals/AtomicFile.h"
#include "globals/ConfigManager.h"
#include "globals/WholeFile.h"
#include "globals/configuration/OverwriteQuestion_p.h"
#include "globals/foundation/WithoutExceptions_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/system/FileTree_p.h"
#include "globals/system/System_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <system_error>

namespace TEKLUVA {

namespace fs = std::filesystem;

namespace {

constexpr const char* GUEST = "guest";

bool failed(const char* message)
{
    logError(message);
    return false;
}

constexpr const char* CANNOT_OPEN = "Could not open file to write.";
constexpr const char* CANNOT_APPEND = "Could not open file to append data.";
constexpr const char* CANNOT_WRITE = "Could not write data to file.";
constexpr const char* CANNOT_FLUSH = "Could not flush file.";

/// A new file, or one that may be written. Not a pipe, whose reader may never come.
bool isUsableTarget(const QString& filename)
{
    const QFileInfo info(filename);
    std::error_code error;
    const bool isPipe = fs::is_fifo(System::nativePath(filename), error);
    return !info.exists() || (info.isWritable() && !isPipe);
}

/// Writes to the file itself: appends, fills a device, or overwrites a file that cannot be replaced.
bool writeInPlace(const QString& filename, const QByteArray& data, QIODevice::OpenMode mode)
{
    const bool append = mode == QIODevice::Append;
    auto file = std::make_unique<QFile>(filename);
    const qint64 before = file->size();
    if (!file->open(mode))
        return failed(append ? CANNOT_APPEND : CANNOT_OPEN);
    const qint64 accepted = file->write(data); // some of it into the buffer
    const bool isAccepted = accepted == data.size();
    if (isAccepted && file->flush())
        return true;
    const qint64 written = qMax<qint64>(accepted, 0) - file->bytesToWrite();
    const bool isAlone = QFileInfo(filename).size() == before + written;
    file.reset(); // tries once more to write what is in the buffer
    // No half record after the old ones; but the records of other processes stay.
    if (append && isAlone && QFileInfo(filename).size() > before)
        QFile::resize(filename, before);
    return failed(isAccepted ? CANNOT_FLUSH : CANNOT_WRITE);
}

/// Whether a file that cannot be replaced for this \p reason may be written itself: its folder is not
/// writable or is sticky, it is a mount point or a device, or the file system cannot rename. For any other
/// reason, such as a full disk, its content would be lost, too.
bool isReasonToOverwrite(const std::error_code& reason)
{
    constexpr std::errc REASONS[] = {
        std::errc::permission_denied,      std::errc::operation_not_permitted,
        std::errc::read_only_file_system,  std::errc::device_or_resource_busy,
        std::errc::cross_device_link,      std::errc::not_supported,
        std::errc::function_not_supported,
    };
    return std::any_of(std::begin(REASONS), std::end(REASONS),
                       [&reason](std::errc known) { return reason == known; });
}

bool replaceOrOverwrite(const QString& filename, const QByteArray& data)
{
    std::optional<AtomicFile> file(std::in_place, filename);
    const bool isOpen = !file->errorCode();
    if (file->write(data) && file->commit())
        return true;
    const std::error_code reason = file->errorCode();
    file.reset(); // and its room is free
    if (isReasonToOverwrite(reason))
        return writeInPlace(filename, data, QIODevice::WriteOnly);
    return failed(isOpen ? CANNOT_FLUSH : CANNOT_OPEN);
}

/// Runs \p operation; what it throws, for want of memory, is a failure.
template <typename Operation>
auto run(Operation&& operation)
{
    return withoutExceptions(operation, [](const char* what) {
        logError(std::string("Could not complete a file operation (") + orUnknown(what) + ").");
    });
}

QByteArray readData(const QString& filename, bool& ok)
{
    if (filename.isEmpty()) {
        // Reading speaks of writing, too, and always has.
        failed("The filename must not be empty to write data to file.");
        return QByteArray();
    }
    if (!QFileInfo::exists(filename))
        return QByteArray();
    const std::optional<QByteArray> content = readWhole(filename);
    ok = content.has_value() || failed(CANNOT_OPEN);
    return content.value_or(QByteArray());
}

bool writeData(const QString& filename, const QByteArray& data, bool append)
{
    if (filename.isEmpty())
        return failed("The filename must not be empty to write data to file.");
    if (data.isEmpty())
        return failed("No data to write.");
    if (!isUsableTarget(filename))
        return failed(append ? CANNOT_APPEND : CANNOT_OPEN);
    return append ? writeInPlace(filename, data, QIODevice::Append) : replaceOrOverwrite(filename, data);
}

/// The account that an auto-save belongs to.
QString accountOf(const QString& user)
{
    const std::string name = user.toStdString();
    const bool isGuest = name.empty() || cmp(name, "Gast", true) || cmp(name, "Guest", true);
    return isGuest ? QString::fromLatin1(GUEST) : user;
}

} // namespace

bool ConfigManager::copyDirectory(const QString& source, const QString& target, bool recursive,
                                  bool removeSource, const QStringList& suffixes)
{
    const auto ask = [](const QString&, const QString& file) { return askToOverwrite(file); };
    return run([&] {
        return FileTree::copy(source, target, {recursive, removeSource, suffixes, ask, {}, {}});
    });
}

bool ConfigManager::deleteDirectory(const QString& path)
{
    return run([&path] { return FileTree::remove(path); });
}

qint64 ConfigManager::getDirectoryContentSize(const QString& path) const
{
    return run([&path] { return FileTree::size(path); });
}

bool ConfigManager::createDirectory(const QString& path)
{
    return run([&path] { return QFileInfo::exists(path) || QDir().mkpath(path); });
}

QByteArray ConfigManager::readDataFromFile(const QString& filename, bool& ok)
{
    ok = false;
    return run([&] { return readData(filename, ok); });
}

bool ConfigManager::writeDataToFile(const QString& filename, const QByteArray& data, bool append)
{
    return run([&] { return writeData(filename, data, append); });
}

QString ConfigManager::getProjectFilename(const QString& name) const
{
    return name + getFileSuffix(E_FST_RGM);
}

QString ConfigManager::getStdProjectName() const
{
    return tr("neues Projekt");
}

QString ConfigManager::getAutosaveFilepath(const QString& user, const bool& fallBackToGuest) const
{
    const auto pathOf = [this](const QString& account) {
        return getPath(E_PT_STORAGE_PROJECTS) + account + getFileSuffix(E_FST_ARGM);
    };
    QString own = pathOf(accountOf(user));
    if (!fallBackToGuest || QFileInfo::exists(own))
        return own;
    const QString guests = pathOf(QString::fromLatin1(GUEST));
    return QFileInfo::exists(guests) ? guests : QString();
}

bool ConfigManager::existAutoSave(const QString& user) const
{
    // With the guest to fall back to, a guest's auto-save counts for every user.
    const auto suffixes = {"", "_1", "_2"};
    return std::any_of(suffixes.begin(), suffixes.end(), [&](const char* suffix) {
        return !getAutosaveFilepath(user + QString::fromLatin1(suffix), true).isEmpty();
    });
}

QString ConfigManager::getListOfObjectAddFiles(const QString& folder) const
{
    const QDir dir(getPath(E_PT_MODEL_ADDS) + QLatin1Char('/') + folder);
    QString list;
    const auto filter = QDir::Files | QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot;
    for (const QFileInfo& entry : dir.entryInfoList(filter, QDir::Unsorted))
        list += entry.absoluteFilePath() + QLatin1Char('\n');
    return list;
}

} // namespace TEKLUVA
