#include "support/ApplicationFolders.h"

#include "support/Failure.h"
#include "support/Files.h"

#include "globals/PathRegistry.h"
#include "globals/SettingsKeys.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

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
    if (line.isSet(QStringLiteral("file"))) {
        requireReadable(line.value(QStringLiteral("file")));
        return line.value(QStringLiteral("file"));
    }
    // The configuration manager would create the folder.
    QFile file(describePaths()[E_PT_SETTINGS - 1].path + SettingsKeys::FILE_NAME);
    const QFileInfo info(file);
    // Whoever opens a pipe waits for its writer.
    if (info.exists() && !info.isFile() && !info.isDir())
        throw Failure(QStringLiteral("%1 is not a regular file").arg(file.fileName()));
    if (file.exists() && !file.open(QIODevice::ReadOnly)) {
        throw Failure(QStringLiteral("File %1 cannot be read: %2").arg(file.fileName(), file.errorString()));
    }
    return file.fileName();
}

QString logFolder()
{
    return describePaths()[E_PT_LOGS - 1].path;
}

QStringList logFiles()
{
    const QDir folder(logFolder());
    QStringList paths;
    for (const QString& name :
         folder.entryList({QStringLiteral("*.log")}, QDir::Files | QDir::Readable, QDir::Name))
        paths << folder.filePath(name);
    return paths;
}

} // namespace globalsctl
