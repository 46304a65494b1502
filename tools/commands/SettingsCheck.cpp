#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/KnownSettings.h"
#include "support/Output.h"
#include "support/SettingsFile.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

namespace {

struct Remark
{
    QString path;
    QString text;
};

QList<Remark> remarksOn(const QVariantMap& settings)
{
    QList<Remark> remarks;
    for (auto setting = settings.begin(); setting != settings.end(); ++setting) {
        const QString fault = faultOfSetting(setting.key(), *setting);
        if (!fault.isEmpty())
            remarks << Remark{setting.key(), fault};
    }
    return remarks;
}

QJsonObject objectOf(const SettingsRequest& request, const QList<Remark>& remarks)
{
    QJsonArray array;
    for (const Remark& remark : remarks)
        array << QJsonObject{{QStringLiteral("path"), remark.path}, {QStringLiteral("remark"), remark.text}};
    QJsonArray damaged;
    for (const int line : request.settings.damagedLines())
        damaged << line;
    return {{QStringLiteral("file"), request.file},
            {QStringLiteral("good"), remarks.isEmpty() && damaged.isEmpty()},
            {QStringLiteral("remarks"), array},
            {QStringLiteral("damagedLines"), damaged}};
}

} // namespace

int checkSettings(const QCommandLineParser& line)
{
    const SettingsRequest request(line);
    const QVariantMap settings = request.settings.getSettingsBelow(QString());
    const QList<Remark> remarks = remarksOn(settings);
    const bool isWhole = request.tellDamage();
    const bool isGood = isWhole && remarks.isEmpty();
    if (line.isSet(QStringLiteral("json"))) {
        printAnswer(objectOf(request, remarks));
        return isGood ? Done : Failed;
    }
    for (const Remark& remark : remarks)
        printResult(printable(QStringLiteral("%1 %2").arg(remark.path, remark.text)));
    if (isGood)
        printResult(QStringLiteral("%1: good, %2 settings").arg(request.file).arg(settings.size()));
    return isGood ? Done : Failed;
}

} // namespace globalsctl
