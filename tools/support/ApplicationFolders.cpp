#include "support/ApplicationFolders.h"

#include "support/Failure.h"

#include "globals/PathRegistry.h"
#include "globals/SettingsKeys.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

namespace globalsctl {

using namespace TEKLUVA;

void useFoldersOf(const QCommandLineParser& line)
{
    QCoreApplication::setOrganizationName(line.value(QStringLiteral("organization")));
    QCoreApplication::setApplicationName(line.value(QStringLiteral("application")));
}

QString settingsFileOf(const QCommandLineParser& line)
{
    useFoldersOf(line);
    // The configuration manager would create the folder.
    QFile file(describePaths()[E_PT_SETTINGS - 1].path + SettingsKeys::FILE_NAME);
    if (file.exists() && !file.open(QIODevice::ReadOnly)) {
        throw Failure(QStringLiteral("File %1 cannot be read: %2").arg(file.fileName(), file.errorString()));
    }
    return file.fileName();
}

} // namespace globalsctl
