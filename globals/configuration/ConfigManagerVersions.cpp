#include "globals/ConfigManager.h"
#include "globals/settings/SettingsKeys_p.h"
#include "globals/system/FileTree_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <optional>
#include <vector>

namespace TEKLUVA {

namespace {

/// Of the application that this library belongs to: major, minor, patch and build.
constexpr int VERSION[] = {1, 6, 0, 4184};

/// Digits with a sign at most; QString::toInt() would take blanks around them, too.
std::optional<int> numberIn(const QString& part)
{
    const auto isBlank = [](QChar c) { return c.isSpace(); };
    if (std::any_of(part.begin(), part.end(), isBlank))
        return std::nullopt;
    bool isNumber = false;
    const int number = part.toInt(&isNumber, 10);
    return isNumber ? std::optional<int>(number) : std::nullopt;
}

QStringList listIn(const char* constant)
{
    return QString::fromLatin1(constant).split(QLatin1Char(';'));
}

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

QStringList namesIn(const QDir& folder)
{
    return folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                            QDir::Unsorted);
}

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
        if (QFileInfo(folders.data).isDir() && !FileTree::isWithin(base, folders.data))
            found.push_back(folders);
    }
    return found;
}

QStringList foldersToDelete(const std::vector<OldFolders>& found, const QString& base)
{
    QStringList folders;
    for (const OldFolders& older : found) {
        for (const QString& folder : {older.data, older.leftover}) {
            if (QFileInfo(folder).isDir() && !FileTree::isWithin(base, folder))
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

/// All but the settings file, and not what an earlier start has copied before it failed or was killed.
bool copyData(const QString& old, const QString& base, FileTree::CopyRules rules)
{
    for (const char* transient : {"/cache", "/logs"})
        FileTree::remove(old + QLatin1String(transient));
    rules.leftOut = settingsIn(old);
    return FileTree::copy(old, base, rules) && FileTree::waitForDisk(base);
}

/// Whether data of the user lies in \p folder that must stay: the new data, because under some names of
/// organisation and application an old folder is the new one, or data of an older installation that could not
/// be moved.
bool holdsData(const QString& folder, const QString& base)
{
    const auto isInFolder = [&folder](const QString& data) {
        return QFileInfo::exists(data) && FileTree::isWithin(data, folder);
    };
    return isInFolder(base)
           || std::any_of(
               std::begin(OLDER_INSTALLATIONS), std::end(OLDER_INSTALLATIONS),
               [&](const OlderInstallation& older) { return isInFolder(folderBeside(base, older.data)); });
}

} // namespace

QString ConfigManager::getCurrentVersion(const unsigned int& parts) const
{
    QStringList numbers;
    for (const int number : VERSION) {
        if (static_cast<unsigned int>(numbers.size()) < parts)
            numbers << QString::number(number);
    }
    return numbers.join(QLatin1Char('.'));
}

QString ConfigManager::getCurrentDisplayVersion() const
{
    return getCurrentVersion(4);
}

E_VersionComparison ConfigManager::compareVersion(const QString& first, const QString& second,
                                                  const unsigned short& depth) const
{
    const QStringList firstParts = first.split(QLatin1Char('.'));
    const QStringList secondParts = second.split(QLatin1Char('.'));
    // A version that is the beginning of the other one is equal to it.
    const int common = std::min({static_cast<int>(depth), firstParts.size(), secondParts.size()});
    for (int i = 0; i < common; ++i) {
        const auto a = numberIn(firstParts[i]);
        if (!a)
            return E_VC_FIRST_INVALID;
        const auto b = numberIn(secondParts[i]);
        if (!b)
            return E_VC_SECOND_INVALID;
        if (*a != *b)
            return *a < *b ? E_VC_LOWER : E_VC_HIGHER;
    }
    return E_VC_EQUAL;
}

void ConfigManager::handleQtVersionChanged()
{
    const QStringList keptGroups = listIn(__groups_to_keep);
    for (const QString& group : m_settings.getAllGroups()) {
        if (!keptGroups.contains(group))
            m_settings.removeSettingGroup(group);
    }
    for (const QString& key : listIn(__app_keys_to_remove))
        m_settings.removeSetting(SettingsKeys::APPLICATION, key);
}

void ConfigManager::checkAndClean()
{
    const QString base = getPath(E_PT_SETTINGS);
    if (!QFileInfo(base).isDir() || QFileInfo::exists(settingsIn(base)))
        return;
    std::vector<OldFolders> found = olderInstallations(base);
    FileTree::CopyRules rules;
    rules.recursive = true;
    rules.mayReplace = [this](const QString& source, const QString& target) {
        return isCopyOf(source, target) ? std::make_optional(false) : askToReplace(target);
    };
    rules.deletedLater = foldersToDelete(found, base);
    for (OldFolders& older : found)
        older.isCopied = copyData(older.data, base, rules);
    // With a settings file nothing is moved any more, so it comes last: a start that is killed before goes on
    // with the next one.
    for (const OldFolders& older : found) {
        const bool isWhole = copySettings(older.data, base) && older.isCopied && deleteDirectory(older.data);
        if (isWhole && !holdsData(older.leftover, base))
            deleteDirectory(older.leftover);
    }
}

bool ConfigManager::copySettings(const QString& old, const QString& base)
{
    const QString settings = settingsIn(old);
    if (!QFileInfo(settings).isFile())
        return true;
    FileTree::CopyRules rules;
    rules.mayReplace = [this](const QString&, const QString& target) { return askToReplace(target); };
    return FileTree::copyFile(settings, settingsIn(base), rules) && FileTree::waitForDisk(base);
}

void ConfigManager::removeEnvironmentVersions(const QString& name)
{
    removeFilesOf(name, E_PT_ENVIRONMENT_CACHE);
}

void ConfigManager::removeModelVersions(const QString& name)
{
    removeFilesOf(name, E_PT_MODEL_CACHE);
    removeAddsOf(name, E_PT_MODEL_ADDS);
}

void ConfigManager::removeMaterialVersions(const QString& name)
{
    removeFilesOf(name, E_PT_MATERIAL_CACHE);
    removeAddsOf(name, E_PT_MATERIAL_ADDS);
}

void ConfigManager::removeFilesOf(const QString& name, E_PathType type) const
{
    if (name.isEmpty())
        return; // would match every hidden file
    const QDir folder(getPath(type));
    for (const QString& entry : namesIn(folder)) {
        if (QFileInfo(entry).baseName().compare(name, Qt::CaseInsensitive) == 0)
            QFile::remove(folder.filePath(entry)); // fails for a folder, which stays
    }
}

void ConfigManager::removeAddsOf(const QString& name, E_PathType type)
{
    const QDir folder(getPath(type));
    if (namesIn(folder).contains(name))
        deleteDirectory(folder.filePath(name));
}

} // namespace TEKLUVA
