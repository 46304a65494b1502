#pragma once

#include <QString>
#include <QStringList>

class QCommandLineParser;

/// The folders of the application that the options --organization and --application name.
namespace globalsctl {

/// Makes the library use these folders: both names are part of their paths.
void useFoldersOf(const QCommandLineParser& line);

/// The path of the settings file that --file names, which must exist, or else of that application's, which
/// need not; creates nothing. Throws Failure for what is no regular file, and for a file that exists and
/// cannot be read: the library would take it for one without settings.
QString settingsFileOf(const QCommandLineParser& line);

/// The folder of the application's logs, whether it exists or not, after useFoldersOf().
QString logFolder();
/// The paths of the log files in it, by name.
QStringList logFiles();

} // namespace globalsctl
