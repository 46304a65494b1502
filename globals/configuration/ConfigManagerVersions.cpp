#include "globals/SettingsKeys.h"
#include "globals/configuration/ConfigManager_p.h"
#include "globals/configuration/Migration_p.h"
#include "globals/system/FileTree_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <optional>

namespace TEKLUVA {

namespace {

/// Of the planner: major, minor, patch and build.
constexpr const char* VERSION = "1.6.0.4184";

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

QStringList namesIn(const QDir& folder)
{
    return folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                            QDir::Unsorted);
}

void removeFilesOf(const ConfigManager& config, const QString& name, E_PathType type)
{
    if (name.isEmpty())
        return; // would match every hidden file
    const QDir folder(config.getPath(type));
    for (const QString& entry : namesIn(folder)) {
        if (QFileInfo(entry).baseName().compare(name, Qt::CaseInsensitive) == 0)
            QFile::remove(folder.filePath(entry)); // fails for a folder, which stays
    }
}

void removeAddsOf(const ConfigManager& config, const QString& name, E_PathType type)
{
    const QDir folder(config.getPath(type));
    if (namesIn(folder).contains(name))
        FileTree::remove(folder.filePath(name));
}

} // namespace

QString ConfigManager::getCurrentVersion(const unsigned int& parts) const
{
    const QString own = d->data.getVersion();
    const QString version = own.isEmpty() ? QString::fromLatin1(VERSION) : own;
    const QStringList numbers = version.split(QLatin1Char('.'));
    const auto count = std::min(static_cast<unsigned int>(numbers.size()), parts);
    return QStringList(numbers.mid(0, static_cast<int>(count))).join(QLatin1Char('.'));
}

void ConfigManager::setCurrentVersion(const QString& version)
{
    d->data.setVersion(version);
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
    const auto common = std::min<QStringList::size_type>({depth, firstParts.size(), secondParts.size()});
    for (QStringList::size_type i = 0; i < common; ++i) {
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
    QList<SettingsChange> removals;
    for (const QString& group : d->settings.getAllGroups()) {
        if (!keptGroups.contains(group))
            removals << SettingsChange{group, {}, std::nullopt};
    }
    for (const QString& key : listIn(__app_keys_to_remove))
        removals << SettingsChange{SettingsKeys::APPLICATION, key, std::nullopt};
    d->settings.changeSettings(removals);
}

// NOLINTBEGIN(readability-make-member-function-const): they change what the manager keeps on disk.
void ConfigManager::checkAndClean()
{
    d->migration = Migration::moveOlderInstallations(getPath(E_PT_SETTINGS));
}

MigrationReport ConfigManager::migrationReport() const
{
    return d->migration;
}

void ConfigManager::removeEnvironmentVersions(const QString& name)
{
    removeFilesOf(*this, name, E_PT_ENVIRONMENT_CACHE);
}

void ConfigManager::removeModelVersions(const QString& name)
{
    removeFilesOf(*this, name, E_PT_MODEL_CACHE);
    removeAddsOf(*this, name, E_PT_MODEL_ADDS);
}

void ConfigManager::removeMaterialVersions(const QString& name)
{
    removeFilesOf(*this, name, E_PT_MATERIAL_CACHE);
    removeAddsOf(*this, name, E_PT_MATERIAL_ADDS);
}
// NOLINTEND(readability-make-member-function-const)

} // namespace TEKLUVA
