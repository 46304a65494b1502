#include "globals/configuration/Migration_p.h"

#include "globals/Containment.h"
#include "globals/SettingsKeys.h"
#include "globals/configuration/OverwriteQuestion_p.h"
#include "globals/system/FileTree_p.h"
#include "globals/system/System_p.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <thread>
#include <vector>

namespace TEKLUVA::Migration {

namespace {

/// Where an older installation kept its data and what is left of it once that is moved; from the folder of
/// the settings file.
struct OlderInstallation
{
    const char* data;
    const char* leftover;
};

constexpr OlderInstallation OLDER_INSTALLATIONS[] = {
    {"../../Falbrin GmbH/Tekluva 3D-Planer/", "../../Falbrin GmbH/"},
    {"../../tekluva/Tekluva 3D-Planer/", "../Tekluva 3D-Planer/"},
};

/// Where \p relative leads from \p base; "../.." of a base that is a link is taken where the link leads.
QString folderBeside(const QString& base, const char* relative)
{
    return QDir::cleanPath(QFileInfo(base).canonicalFilePath() + QLatin1Char('/') + QLatin1String(relative));
}

/// An older installation that is there.
struct OldFolders
{
    QString data;
    QString leftover;
    bool isCopied = false; ///< all but the settings
};

/// Those that the data in \p base is not part of.
std::vector<OldFolders> olderInstallations(const QString& base)
{
    std::vector<OldFolders> found;
    for (const OlderInstallation& older : OLDER_INSTALLATIONS) {
        const OldFolders folders{folderBeside(base, older.data), folderBeside(base, older.leftover), false};
        if (QFileInfo(folders.data).isDir() && !isWithin(base, folders.data))
            found.push_back(folders);
    }
    return found;
}

QStringList foldersToDelete(const std::vector<OldFolders>& found, const QString& base)
{
    QStringList folders;
    for (const OldFolders& older : found) {
        for (const QString& folder : {older.data, older.leftover}) {
            if (QFileInfo(folder).isDir() && !isWithin(base, folder))
                folders << folder;
        }
    }
    return folders;
}

QString settingsIn(const QString& folder)
{
    return QDir(folder).filePath(SettingsKeys::FILE_NAME);
}

/// A link is no file of its own: what it leads to may be deleted later.
bool isCopyOf(const QString& source, const QString& target)
{
    constexpr qint64 PIECE = qint64{1} << 20;
    QFile first(source);
    QFile second(target);
    if (QFileInfo(target).isSymLink() || !QFileInfo(target).isFile() || !first.open(QIODevice::ReadOnly)
        || !second.open(QIODevice::ReadOnly) || first.size() != second.size())
        return false;
    while (!first.atEnd()) {
        const QByteArray piece = first.read(PIECE);
        if (piece.isEmpty() || piece != second.read(PIECE))
            return false;
    }
    return true;
}

/// Also true for a link that leads nowhere.
bool isThere(const QString& path)
{
    const QFileInfo file(path);
    return file.exists() || file.isSymLink();
}

/// All that lies in \p folder itself.
QStringList entriesOf(const QString& folder)
{
    QStringList entries;
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo& entry : QDir(folder).entryInfoList(all))
        entries << entry.absoluteFilePath();
    return entries;
}

/// Those of \p paths at which nothing is any more.
QStringList goneOf(const QStringList& paths)
{
    QStringList gone;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(gone),
                 [](const QString& path) { return !isThere(path); });
    return gone;
}

/// What is not carried over. Returns what is deleted.
QStringList dropTransients(const QString& old)
{
    QStringList transients;
    for (const char* name : {"/cache", "/logs"}) {
        const QString folder = old + QLatin1String(name);
        if (isThere(folder))
            transients << folder;
        FileTree::remove(folder);
    }
    return goneOf(transients);
}

/// All but the settings file, and not what an earlier start has copied before it failed or was killed.
bool copyData(const QString& old, const QString& base, FileTree::CopyRules rules)
{
    rules.leftOut = settingsIn(old);
    return FileTree::copy(old, base, rules);
}

/// Whether data of the user lies in \p folder that must stay: the new data, because under some names of
/// organisation and application an old folder is the new one, or data of an older installation that could not
/// be moved.
bool holdsData(const QString& folder, const QString& base)
{
    const auto isInFolder = [&folder](const QString& data) {
        return QFileInfo::exists(data) && isWithin(data, folder);
    };
    return isInFolder(base)
           || std::any_of(
               std::begin(OLDER_INSTALLATIONS), std::end(OLDER_INSTALLATIONS),
               [&](const OlderInstallation& older) { return isInFolder(folderBeside(base, older.data)); });
}

/// Where the settings wait until all that is to be deleted is gone.
QString stagedSettingsIn(const QString& base)
{
    return settingsIn(base) + QLatin1String(".moving");
}

/// What the user does not let replace is not moved: the older file may be the only one of its content.
FileTree::Overwrite replaceOrFail(const QString& file)
{
    const FileTree::Overwrite answer = askToOverwrite(file);
    return answer == FileTree::Overwrite::Replace ? answer : FileTree::Overwrite::Fail;
}

bool stageSettings(const QString& old, const QString& base)
{
    const QString settings = settingsIn(old);
    if (!QFileInfo(settings).isFile())
        return true;
    FileTree::CopyRules rules;
    rules.onExisting = [&base](const QString& source, const QString& target) {
        return isCopyOf(source, target) ? FileTree::Overwrite::Keep : replaceOrFail(settingsIn(base));
    };
    return FileTree::copyFile(settings, stagedSettingsIn(base), rules) && FileTree::syncFolder(base);
}

/// Returns what is deleted without a copy.
QStringList removeOld(const OldFolders& older, const QString& base)
{
    if (!FileTree::remove(older.data) || holdsData(older.leftover, base))
        return {};
    const QStringList beside = entriesOf(older.leftover);
    FileTree::remove(older.leftover);
    return goneOf(beside);
}

/// Of a start that was killed after it had emptied them. Others are not empty.
void removeEmptyFolders(const QString& base)
{
    for (const OlderInstallation& older : OLDER_INSTALLATIONS)
        QDir().rmdir(folderBeside(base, older.leftover));
}

bool isFirstStart(const QString& base)
{
    return QFileInfo(base).isDir() && !QFileInfo::exists(settingsIn(base));
}

/// Lets processes move data into \p base one after the other, as long as what it returns lives: whoever went
/// on beside the move would start with new settings, and those in the move would be left behind. After a
/// minute the other one does not count.
System::FileHandle waitForTurn(const QString& base)
{
    constexpr qint64 PATIENCE = 60'000; // milliseconds
    constexpr std::chrono::milliseconds BETWEEN_LOOKS{10};
    std::error_code error;
    auto folder = System::FileHandle::openForReading(System::nativePath(base), error);
    QElapsedTimer waiting;
    waiting.start();
    while (!error && folder.tryLock() == std::errc::operation_would_block && waiting.elapsed() < PATIENCE)
        std::this_thread::sleep_for(BETWEEN_LOOKS);
    return folder;
}

MigrationReport moveAll(const QString& base)
{
    MigrationReport report;
    std::vector<OldFolders> found = olderInstallations(base);
    FileTree::CopyRules rules;
    rules.recursive = true;
    rules.onExisting = [](const QString& source, const QString& target) {
        return isCopyOf(source, target) ? FileTree::Overwrite::Keep : replaceOrFail(target);
    };
    rules.deletedLater = foldersToDelete(found, base);
    for (OldFolders& older : found) {
        report.deleted << dropTransients(older.data);
        older.isCopied = copyData(older.data, base, rules);
    }
    for (const OldFolders& older : found) {
        if (stageSettings(older.data, base) && older.isCopied) {
            report.moved << older.data;
            report.deleted << removeOld(older, base);
        }
        if (isThere(older.data))
            report.kept << older.data;
    }
    if (isThere(stagedSettingsIn(base)))
        removeEmptyFolders(base);
    // Does not replace settings that another process has written meanwhile.
    QFile::rename(stagedSettingsIn(base), settingsIn(base));
    return report;
}

} // namespace

MigrationReport moveOlderInstallations(const QString& base)
{
    if (!isFirstStart(base))
        return {};
    const System::FileHandle turn = waitForTurn(base);
    return isFirstStart(base) ? moveAll(base) : MigrationReport();
}

} // namespace TEKLUVA::Migration
