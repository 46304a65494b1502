#include "Fuzz.h"

#include "globals/Settings.h"

#include <QFile>

using namespace TEKLUVA;

/// A settings file that somebody has edited, and a write to it.
void fuzz(const QByteArray& input)
{
    // Qt ends the process itself when it reads a pen or a bitmap from damaged bytes. We store dates only.
    if (input.contains("@Variant(") || input.count("@DateTime(") != input.count(R"(@DateTime(\0\0\0\x10\0)"))
        return;
    // Another name each time, because Qt remembers what it has read.
    static int number = 0;
    const QString path = QString::number(++number) + QLatin1String(".ini");
    const QString group = QStringLiteral("Application");
    const QString key = QStringLiteral("last_runtime_state");
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(input) == input.size());
    file.close();
    bool isWritten = false;
    {
        Settings settings(path, QSettings::IniFormat, nullptr);
        for (const QString& name : QStringList(QString()) + settings.getAllGroups()) {
            for (const QString& member : settings.getAllGroupMembers(name))
                require(settings.hasSetting(name, member));
            settings.getSettings(name);
        }
        settings.setSetting(group, key, path);
        require(settings.getSetting(group, key) == path);
        isWritten = !settings.hasPendingChanges();
    }
    if (isWritten)
        require(QSettings(path, QSettings::IniFormat).value(group + QLatin1Char('/') + key) == path);
    else
        require(file.open(QIODevice::ReadOnly) && file.readAll() == input);
    file.remove();
}
