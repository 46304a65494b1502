#include "tools/support/ApplicationFolders.h"

#include "tools/support/Failure.h"

#include "globals/PathRegistry.h"
#include "globals/SettingsKeys.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

namespace globalsctl {

using namespace TEKLUVA;

void lookAtFoldersOf(const QCommandLineParser& line)
{
    QCoreApplication::setOrganizationName(line.value(QStringLiteral("organization")));
    QCoreApplication::setApplicationName(line.value(QStringLiteral("application")));
}

QString settingsFileOf(const QCommandLineParser& line)
{
    lookAtFoldersOf(line);
    // Described, because asking the configuration manager would make the folder.
    QFile file(describePaths()[E_PT_SETTINGS - 1].path + SettingsKeys::FILE_NAME);
    if (file.exists() && !file.open(QIODevice::ReadOnly)) {
        throw Failure(QStringLiteral("File %1 cannot be read: %2").arg(file.fileName(), file.errorString()));
    }
    return file.fileName();
}

} // namespace globalsctl
