#include "Fuzz.h"

#include "tests/TestFiles.h"

#include "globals/Settings.h"

using namespace TEKLUVA;

namespace {

const QString GROUP = QStringLiteral("Application");
const QString KEY = QStringLiteral("last_runtime_state");

void readAll(const Settings& settings)
{
    for (const QString& group : QStringList(QString()) + settings.getAllGroups()) {
        for (const QString& key : settings.getAllGroupMembers(group))
            require(settings.hasSetting(group, key));
        settings.getSettings(group);
    }
}

} // namespace

/// A settings file that somebody has edited or prepared, and a write to it.
void fuzz(const QByteArray& input)
{
    const QString path = QStringLiteral("fuzz.ini");
    require(TestFiles::write(path, input));
    Settings settings(path, QSettings::IniFormat, nullptr);
    readAll(settings);
    settings.damagedLines();
    settings.setSetting(GROUP, KEY, path);
    require(!settings.hasPendingChanges());
    // Either nothing was lost, or all of it was kept.
    const QString aside = path + QStringLiteral(".damaged");
    require(!QFile::exists(aside) || (TestFiles::contentOf(aside) == input && QFile::remove(aside)));

    // What was written is read by a new reader, and is the same when it is written once more.
    const QByteArray written = TestFiles::contentOf(path);
    Settings again(path, QSettings::IniFormat, nullptr);
    require(again.getSetting(GROUP, KEY) == path);
    readAll(again);
    again.setSettings(GROUP, {{KEY, 1}});
    again.setSettings(GROUP, {{KEY, path}});
    require(TestFiles::contentOf(path) == written);
    // Qt ends the process itself when it reads a pen or a bitmap from damaged bytes.
    if (written.contains('@'))
        return;
    static int number = 0; // Qt remembers what it has read under a name
    const QString another = QString::number(++number) + QStringLiteral(".ini");
    require(QFile::rename(path, another));
    require(QSettings(another, QSettings::IniFormat).value(GROUP + QLatin1Char('/') + KEY) == path);
    QFile::remove(another);
}
