#include "globals/ConfigManager.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/system/FileTree_p.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QSaveFile>
#include <QThread>

#include <algorithm>
#include <memory>
#include <optional>
#include <sys/stat.h>

namespace TEKLUVA {

namespace {

constexpr const char* GUEST = "guest";

bool canAsk()
{
    const QCoreApplication* application = QCoreApplication::instance();
    return qobject_cast<const QApplication*>(application)
           && QThread::currentThread() == application->thread();
}

bool failed(const char* message)
{
    logError(message);
    return false;
}

/// Neither reading nor writing one need ever end.
bool isPipe(const QString& filename)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(filename).constData(), &info) == 0 && S_ISFIFO(info.st_mode);
}

/// A file to write \p filename with. Whole files are written beside the old one, which they replace when all
/// is on the disk; appending goes to the file itself, and so does what is a device.
std::unique_ptr<QFileDevice> deviceFor(const QString& filename, bool append)
{
    const QFileInfo info(filename);
    if (append || (info.exists() && !info.isFile()))
        return std::make_unique<QFile>(filename);
    auto file = std::make_unique<QSaveFile>(filename);
    file->setDirectWriteFallback(true); // for a file that may be written in a folder that may not
    return file;
}

bool finish(QFileDevice& file)
{
    if (!file.flush())
        return false;
    if (auto* whole = qobject_cast<QSaveFile*>(&file))
        return whole->commit();
    file.close();
    return true;
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
    const auto mayReplace = [this](const QString&, const QString& file) { return askToReplace(file); };
    return FileTree::copy(source, target, {recursive, removeSource, suffixes, mayReplace, {}, {}});
}

std::optional<bool> ConfigManager::askToReplace(const QString& file) const
{
    if (!canAsk())
        return std::nullopt;
    const QString question = tr("Die Datei %1 existiert bereits. Soll sie überschrieben werden?").arg(file);
    return QMessageBox::information(nullptr, tr("Datei überschreiben"), question,
                                    QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes)
           == QMessageBox::Yes;
}

bool ConfigManager::deleteDirectory(const QString& path)
{
    return FileTree::remove(path);
}

qint64 ConfigManager::getDirectoryContentSize(const QString& path) const
{
    return FileTree::size(path);
}

bool ConfigManager::createDirectory(const QString& path)
{
    return QFileInfo::exists(path) || QDir().mkpath(path);
}

QByteArray ConfigManager::readDataFromFile(const QString& filename, bool& ok)
{
    ok = false;
    if (filename.isEmpty()) {
        // Reading speaks of writing, too, and always has.
        failed("The filename must not be empty to write data to file.");
        return QByteArray();
    }
    if (!QFileInfo::exists(filename))
        return QByteArray();
    const std::optional<QByteArray> content = FileTree::contentOf(filename);
    ok = content.has_value() || failed("Could not open file to write.");
    return content.value_or(QByteArray());
}

bool ConfigManager::writeDataToFile(const QString& filename, const QByteArray& data, bool append)
{
    if (filename.isEmpty())
        return failed("The filename must not be empty to write data to file.");
    if (data.isEmpty())
        return failed("No data to write.");
    auto file = deviceFor(filename, append);
    const qint64 before = QFileInfo(filename).size();
    if (isPipe(filename) || !file->open(append ? QIODevice::Append : QIODevice::WriteOnly))
        return failed(append ? "Could not open file to append data." : "Could not open file to write.");
    const qint64 accepted = file->write(data); // some of it into the buffer
    const bool isWritten = accepted == data.size();
    if (isWritten && finish(*file))
        return true;
    const qint64 written = qMax<qint64>(accepted, 0) - file->bytesToWrite();
    const bool isAlone = QFileInfo(filename).size() == before + written;
    file.reset(); // tries once more to write what is in the buffer
    // No half record behind the old ones; but the records of other processes stay.
    if (append && isAlone && QFileInfo(filename).size() > before)
        QFile::resize(filename, before);
    return failed(isWritten ? "Could not flush file." : "Could not write data to file.");
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
