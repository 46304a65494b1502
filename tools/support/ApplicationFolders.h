#pragma once

#include <QString>

class QCommandLineParser;

/// The folders of the application that the options --organization and --application name.
namespace globalsctl {

/// Makes the library look there: both are names of folders on the way.
void lookAtFoldersOf(const QCommandLineParser& line);

/// Where the settings file of that application is, or would be; makes nothing. Throws Failure for
/// a file that is there but cannot be read, because it would pass for one without settings.
QString settingsFileOf(const QCommandLineParser& line);

} // namespace globalsctl
