// Reads and writes settings files with QSettings, and without the library:
//
//     other_qt list FILE           prints each key with its type and its text
//     other_qt copy FILE TARGET    writes all values of FILE into TARGET

#include "Described.h"

#include <QColor>
#include <QCoreApplication>
#include <QSettings>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (!QColor(Qt::red)
             .isValid()) // whoever never uses QtGui is not linked with it, and cannot read its types
        return 1;
    const QSettings settings(arguments.value(2), QSettings::IniFormat);
    if (arguments.value(1) == QLatin1String("list")) {
        for (const QString& key : settings.allKeys()) {
            const QByteArray line = described(key, settings.value(key));
            std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
        }
        return 0;
    }
    QSettings target(arguments.value(3), QSettings::IniFormat);
    for (const QString& key : settings.allKeys())
        target.setValue(key, settings.value(key));
    target.sync();
    return target.status() == QSettings::NoError ? 0 : 1;
}
