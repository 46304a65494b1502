#include "globals/PathRegistry.h"

#include "globals/Settings.h"
#include "globals/SettingsKeys.h"
#include "globals/configuration/PathRegistry_p.h"
#include "globals/configuration/PathTable_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/system/StandardLocations_p.h"

#include <QDir>
#include <QFileInfo>
#include <QObject>
#include <QStringList>

#include <algorithm>

namespace TEKLUVA {

namespace {

/// What happens to folders that are missing on the way.
enum class Missing {
    Create,
    Leave, ///< only their path is of interest
};

/// Empty for no step, and for an application that has not set its name.
QString nameOf(const PathStep& step)
{
    return step.isApplicationName() ? StandardLocations::applicationName() : QString::fromUtf8(step.name);
}

/// False when it is missing and cannot be created.
bool findOrCreate(const QDir& parent, const QString& name)
{
    if (parent.exists(name))
        return true;
    const bool isCreated = parent.mkdir(name);
    return isCreated || parent.exists(name); // somebody else may have created it meanwhile
}

/// Finds the folder of a path type.
class Walk
{
public:
    Walk(const PathOverrides& overrides, Missing missing)
        : m_overrides(overrides)
        , m_missing(missing)
    {
    }

    /// The folder of \p row, which has a path. Without "/" at its end.
    QString resolve(const PathRow& row) const
    {
        const QString chosen = overrideOf(row);
        if (!chosen.isEmpty()) {
            if (row.overriddenBy.precedence == Precedence::AlwaysCreated)
                createPath(chosen, row.steps.front().cannotCreate);
            return QDir(chosen).absolutePath();
        }
        QDir folder(row.start.base ? base(row.start) : resolve(*pathRow(row.start.type)));
        for (const PathStep& step : row.steps)
            descend(folder, step);
        return folder.absolutePath();
    }

    /// The folder that the user has set for \p row, as it is in the settings. Empty when the rule applies.
    QString overrideOf(const PathRow& row) const
    {
        if (!row.overriddenBy.key)
            return QString();
        const QString chosen = m_overrides(QString::fromLatin1(row.overriddenBy.key));
        const bool mustExist = row.overriddenBy.precedence == Precedence::IfExisting;
        return mustExist && !QFileInfo::exists(chosen) ? QString() : chosen;
    }

private:
    QString base(const PathStart& start) const
    {
        // A location ends in separators when the application has not set its names.
        QString folder = QDir::cleanPath(start.base->path());
        if (start.cannotCreate)
            createPath(folder, start.cannotCreate);
        return folder;
    }

    void createPath(const QString& folder, const char* cannotCreate) const
    {
        if (m_missing == Missing::Leave)
            return;
        const bool isThere = QDir().mkpath(folder);
        if (!isThere)
            logError(cannotCreate);
    }

    void descend(QDir& folder, const PathStep& step) const
    {
        const QString name = nameOf(step);
        if (name.isEmpty()
            || (step.unlessNamedBefore && folder.absolutePath().contains(name, Qt::CaseInsensitive)))
            return;
        if (m_missing == Missing::Leave || !step.cannotCreate) {
            folder.setPath(folder.absoluteFilePath(name));
            return;
        }
        const bool isThere = findOrCreate(folder, name);
        if (!isThere)
            logError(step.cannotCreate);
        const bool isEntered = folder.cd(name);
        if (!isEntered)
            logError(step.cannotEnter);
    }

    const PathOverrides& m_overrides;
    const Missing m_missing;
};

QString ruleOf(const PathRow& row)
{
    if (row.start.isNone())
        return QString();
    QStringList words;
    words << (row.start.base ? QString::fromLatin1(row.start.base->name)
                             : QStringLiteral("type %1").arg(row.start.type));
    for (const PathStep& step : row.steps) {
        if (step.isApplicationName())
            words << QStringLiteral("then the application's name");
        else if (step.name)
            words << QStringLiteral("then \"%1\"").arg(QString::fromUtf8(step.name));
        if (step.unlessNamedBefore)
            words << QStringLiteral("unless the path holds that word already");
    }
    return words.join(QStringLiteral(", "));
}

PathDescription describe(const PathRow& row, const Walk& walk)
{
    const QString path = row.start.isNone() ? QString() : walk.resolve(row) + QLatin1Char('/');
    return {row.type,
            QString::fromLatin1(row.role),
            ruleOf(row),
            QString::fromLatin1(row.overriddenBy.key),
            !walk.overrideOf(row).isEmpty(),
            path,
            !path.isEmpty() && QFileInfo::exists(path)};
}

} // namespace

QString resolvePath(E_PathType type, const PathOverrides& overrides)
{
    const PathRow* row = pathRow(type);
    if (!row || row->start.isNone())
        return QString();
    return Walk(overrides, Missing::Create).resolve(*row) + QLatin1Char('/');
}

QString overrideKey(E_PathType type)
{
    const PathRow* row = pathRow(type);
    return row ? QString::fromLatin1(row->overriddenBy.key) : QString();
}

QString overrideDoubt(E_PathType type, const QString& path)
{
    if (path.isEmpty())
        return QString();
    if (QDir::isRelativePath(path))
        return QStringLiteral("The folder %1 is relative. Where it leads depends on the working directory.")
            .arg(path);
    const bool mustExist = pathRow(type)->overriddenBy.precedence == Precedence::IfExisting;
    return mustExist && !QFileInfo::exists(path)
               ? QStringLiteral("The folder %1 does not exist. It is not used before it does.").arg(path)
               : QString();
}

QString fixedDirName(E_PathType type)
{
    const PathRow* row = pathRow(type);
    if (!row || row->dirName == DirName::None)
        return QString();
    const auto last = std::find_if(row->steps.rbegin(), row->steps.rend(),
                                   [](const PathStep& step) { return step.name != nullptr; });
    return QString::fromUtf8(last->name);
}

QList<PathDescription> describePaths()
{
    const PathOverrides none = [](const QString&) { return QString(); };
    const QString settingsFile = Walk(none, Missing::Leave).resolve(*pathRow(E_PT_SETTINGS))
                                 + QLatin1Char('/') + SettingsKeys::FILE_NAME;
    QObject owner; // deletes the store at the end of this scope, also in a thread without an event loop
    const Settings settings(settingsFile, QSettings::IniFormat, &owner);
    const PathOverrides overrides = [&settings](const QString& key) {
        return settings.getSetting(SettingsKeys::USER_PATHS, key).toString();
    };
    const Walk walk(overrides, Missing::Leave);
    QList<PathDescription> descriptions;
    for (const PathRow& row : pathRows())
        descriptions << describe(row, walk);
    return descriptions;
}

} // namespace TEKLUVA
