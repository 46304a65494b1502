#pragma once

#include <QString>

class QCommandLineParser;

/// The folders of the application that the options --organization and --application name.
namespace globalsctl {

/// Makes the library use these folders: both names are part of their paths.
void useFoldersOf(const QCommandLineParser& line);

/// The path of that application's settings file, which need not exist; creates nothing. Throws Failure for a
/// file that exists and cannot be read: the library would take it for one without settings.
QString settingsFileOf(const QCommandLineParser& line);

} // namespace globalsctl
