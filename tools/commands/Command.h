#pragma once

#include <vector>

class QCommandLineParser;

namespace globalsctl {

/// An option of a command, "--name" or "--name VALUE".
struct Option
{
    const char* name = nullptr; ///< without dashes
    const char* summary = nullptr;
    const char* value = nullptr;   ///< the name of its value in help texts; null for an option without one
    const char* initial = nullptr; ///< the value when the option is not given; null for none
    const char* former = nullptr;  ///< an older name, which works but is documented no more; null for none
};

/// A subcommand, as the dispatcher runs it and as help, manual and completion describe it.
struct Command
{
    const char* words; ///< what is typed, "presets show"
    /// One word for each: "FILE". One in brackets may be left out; "..." after the last means one or more.
    const char* arguments;
    const char* summary;
    std::vector<Option> options;
    /// Gets the options and as many arguments as the command takes. Returns the exit code. May throw.
    int (*run)(const QCommandLineParser& line);
};

/// All commands, in the order of the help text.
const std::vector<Command>& commands();

/// The options that every command has besides its own.
const std::vector<Option>& commonOptions();

/// All options that \p command takes, its own first.
std::vector<Option> optionsOf(const Command& command);

/// \name The functions of the commands
/// Each in a file of its command's name: PresetsShow.cpp.
/// @{
int showPresets(const QCommandLineParser& line);
int checkPresets(const QCommandLineParser& line);
int diffPresets(const QCommandLineParser& line);
int describePreset(const QCommandLineParser& line);
int showPresetTemplate(const QCommandLineParser& line);
int dumpPresets(const QCommandLineParser& line);
int buildPresets(const QCommandLineParser& line);
int encryptData(const QCommandLineParser& line);
int decryptData(const QCommandLineParser& line);
int listData(const QCommandLineParser& line);
int testData(const QCommandLineParser& line);
int extractData(const QCommandLineParser& line);
int packData(const QCommandLineParser& line);
int showPaths(const QCommandLineParser& line);
int writeReport(const QCommandLineParser& line);
int showLogs(const QCommandLineParser& line);
int showState(const QCommandLineParser& line);
int listSettings(const QCommandLineParser& line);
int getSetting(const QCommandLineParser& line);
int setSetting(const QCommandLineParser& line);
int checkSettings(const QCommandLineParser& line);
int removeSetting(const QCommandLineParser& line);
int showColour(const QCommandLineParser& line);
int convertUnits(const QCommandLineParser& line);
/// @}

} // namespace globalsctl
