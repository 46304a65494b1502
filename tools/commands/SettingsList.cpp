#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/SettingsFile.h"

#include <QCommandLineParser>
#include <QJsonObject>

#include <vector>

namespace globalsctl {

namespace {

using Setting = QVariantMap::const_iterator;

/// The settings of each group and sub-group that holds any; the empty group is that of the keys without one.
using Groups = QMap<QString, std::vector<Setting>>;

int separatorIn(const QString& path)
{
    return static_cast<int>(path.lastIndexOf(QLatin1Char('/')));
}

/// Of \p values, which has to live as long.
Groups groupsOf(const QVariantMap& values)
{
    Groups groups;
    for (Setting setting = values.begin(); setting != values.end(); ++setting)
        groups[setting.key().left(qMax(0, separatorIn(setting.key())))].push_back(setting);
    return groups;
}

void printJson(const Groups& groups)
{
    QJsonObject object;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        QJsonObject values;
        for (const Setting setting : *group)
            values.insert(setting.key().mid(separatorIn(setting.key()) + 1), jsonOfSetting(*setting));
        object.insert(group.key(), values);
    }
    printAnswer({{QStringLiteral("groups"), object}});
}

void printLines(const Groups& groups)
{
    for (const std::vector<Setting>& group : groups) {
        for (const Setting setting : group)
            printResult(lineOfSetting(setting.key(), *setting));
    }
}

} // namespace

int listSettings(const QCommandLineParser& line)
{
    const SettingsRequest request(line);
    const QVariantMap values = request.settings.getSettingsBelow(request.group);
    const Groups groups = groupsOf(values);
    if (!request.group.isEmpty() && groups.isEmpty())
        request.failAsGroupAbsent();
    if (line.isSet(QStringLiteral("json")))
        printJson(groups);
    else
        printLines(groups);
    return request.tellDamage() ? Done : Failed;
}

} // namespace globalsctl
