#include "support/SettingsFile.h"

#include "support/ApplicationFolders.h"
#include "support/Failure.h"
#include "support/Output.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDebug>
#include <QJsonArray>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// The argument at \p place, called \p name. The settings skip separators, so "/" is as empty as "".
QString nameFrom(const QCommandLineParser& line, int place, const char* name)
{
    const QStringList arguments = line.positionalArguments();
    QString given = arguments.value(place);
    if (arguments.size() > place && given.count(QLatin1Char('/')) == given.size())
        throw UsageError(QStringLiteral("%1 is empty").arg(QLatin1String(name)));
    return given;
}

} // namespace

SettingsRequest::SettingsRequest(const QCommandLineParser& line)
    : group(nameFrom(line, 0, "GROUP"))
    , key(nameFrom(line, 1, "KEY"))
    , value(line.positionalArguments().value(2))
    // Not isSet(), which prints a warning for a command without that option.
    , isForced(line.optionNames().contains(QStringLiteral("force")))
{
    file = settingsFileOf(line);
    settings.openSettingsFile(file, QSettings::IniFormat, QCoreApplication::instance());
    requireRead(settings, file);
}

void SettingsRequest::failAsGroupAbsent() const
{
    throw Failure(QStringLiteral("group \"%1\" is not in %2").arg(group, file));
}

void SettingsRequest::failAsKeyAbsent() const
{
    throw Failure(QStringLiteral("key \"%1\" of group \"%2\" is not in %3").arg(key, group, file));
}

bool SettingsRequest::tellDamage() const
{
    const QList<int> lines = settings.damagedLines();
    for (const int line : lines)
        printError(QStringLiteral("%1:%2: damaged").arg(file).arg(line));
    return lines.isEmpty();
}

void SettingsRequest::requireWhole() const
{
    if (!tellDamage() && !isForced)
        throw Failure(
            QStringLiteral("%1 stays as it is. --force rewrites it without its damaged lines and keeps "
                           "the old one as \"%1.damaged\", with a number where there is one")
                .arg(file));
}

void SettingsRequest::requireWritten() const
{
    if (settings.hasPendingChanges())
        throw Failure(QStringLiteral("%1 could not be written: %2").arg(file, settings.lastError()));
}

void requireRead(const Settings& settings, const QString& file)
{
    const QString reason = settings.lastError();
    if (!reason.isEmpty())
        throw Failure(QStringLiteral("File %1 cannot be read: %2").arg(file, reason));
}

QString textOfSetting(const QVariant& value)
{
    if (value.userType() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", "));
    if (value.canConvert<QString>())
        return value.toString();
    QString text;
    QDebug(&text) << value;
    return text.trimmed();
}

QJsonValue jsonOfSetting(const QVariant& value)
{
    if (value.userType() == QMetaType::QStringList)
        return QJsonArray::fromStringList(value.toStringList());
    return textOfSetting(value);
}

QString lineOfSetting(const QString& path, const QVariant& value)
{
    QString text = textOfSetting(value);
    // A line break in a value must not look like the next setting.
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return printable(path + QLatin1Char('=') + text);
}

} // namespace globalsctl
