#include "support/PathList.h"

#include "globals/PathRegistry.h"
#include "globals/SettingsKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

namespace {

/// The folder of this program: the library takes it for that of the application.
QString ownFolder()
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/');
}

bool isOfProgram(const TEKLUVA::PathDescription& path)
{
    return path.path.startsWith(ownFolder());
}

/// \p path as it is for a program in \p folder.
TEKLUVA::PathDescription moved(TEKLUVA::PathDescription path, const QString& folder)
{
    path.path = QDir::cleanPath(folder) + QLatin1Char('/') + path.path.mid(ownFolder().size());
    path.exists = QFileInfo::exists(path.path);
    return path;
}

QString reasonOf(const TEKLUVA::PathDescription& path)
{
    return path.overridden ? QStringLiteral("set by the user: %1 in %2")
                                 .arg(path.overrideKey, TEKLUVA::SettingsKeys::USER_PATHS)
                           : path.rule;
}

QStringList rowOf(const TEKLUVA::PathDescription& path, bool isOfProgram)
{
    const QString none = QStringLiteral("-");
    if (path.path.isEmpty())
        return {QString::number(path.type), path.role, none, none, none};
    return {QString::number(path.type), path.role, path.path,
            path.exists ? QStringLiteral("yes") : QStringLiteral("no"),
            isOfProgram ? reasonOf(path) + QStringLiteral(" (of the program: see --program)")
                        : reasonOf(path)};
}

QJsonObject objectOf(const TEKLUVA::PathDescription& path, bool isOfProgram)
{
    return {{QStringLiteral("type"), path.type},
            {QStringLiteral("ofProgram"), isOfProgram},
            {QStringLiteral("role"), path.role},
            {QStringLiteral("path"), path.path},
            {QStringLiteral("exists"), path.exists},
            {QStringLiteral("rule"), path.rule},
            {QStringLiteral("overrideKey"), path.overrideKey},
            {QStringLiteral("overridden"), path.overridden}};
}

struct ShownPath
{
    TEKLUVA::PathDescription path;
    bool isOfProgram;
};

QList<ShownPath> shownPaths(const QString& program)
{
    QList<ShownPath> shown;
    for (const TEKLUVA::PathDescription& path : TEKLUVA::describePaths()) {
        const bool isDependent = isOfProgram(path);
        shown << ShownPath{isDependent && !program.isEmpty() ? moved(path, program) : path, isDependent};
    }
    return shown;
}

} // namespace

QList<QStringList> rowsOfPaths(const QString& program)
{
    QList<QStringList> rows = {{QStringLiteral("TYPE"), QStringLiteral("ROLE"), QStringLiteral("PATH"),
                                QStringLiteral("EXISTS"), QStringLiteral("WHY")}};
    for (const ShownPath& shown : shownPaths(program))
        rows << rowOf(shown.path, shown.isOfProgram);
    return rows;
}

QJsonArray arrayOfPaths(const QString& program)
{
    QJsonArray objects;
    for (const ShownPath& shown : shownPaths(program))
        objects << objectOf(shown.path, shown.isOfProgram);
    return objects;
}

} // namespace globalsctl
