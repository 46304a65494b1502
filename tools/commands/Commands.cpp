#include "commands/Command.h"

#include "support/LogRecord.h"

#include <QByteArray>

namespace globalsctl {

namespace {

constexpr Option JSON = {"json", "Answer in JSON, for programs"};
constexpr Option STRICT = {"strict", "End with 1 for notes, too"};
constexpr Option CHANGED = {"changed", "Only presets whose value in force differs from the built-in one"};
constexpr Option ORGANIZATION = {"organization", "Whose folders to look at", "NAME", "tekluva"};
constexpr Option APPLICATION = {"application", "The application that the folders belong to", "NAME",
                                "tekluva 3D-Planner"};
constexpr Option PROGRAM = {"program", "The folder of the application's program, instead of this tool's",
                            "FOLDER"};
constexpr Option SETTINGS_FILE = {"file", "This settings file instead of the application's", "FILE"};
constexpr Option REWRITE = {"force",
                            "Write a file with damaged lines without them; \".damaged\" keeps the old one"};
constexpr Option FROM = {"from", "The unit of VALUE by its abbreviation, such as mm or ft", "UNIT", "cm"};
constexpr Option TO = {"to", "The unit to convert to", "UNIT", "cm"};
constexpr Option DIMENSION = {"dimension",
                              "linear, squared (only m² and sq ft) or cubic (only m³ and cubic feet)",
                              "DIMENSION", "linear"};
constexpr Option IMAGE = {"image", "Write an image of the colours from 1000 to 12000 kelvins", "FILE"};
constexpr Option EXCLUDE = {"exclude", "Leave out what has this name in the report, or below it", "PART"};
const QByteArray LEVEL_SUMMARY = QStringLiteral("Only entries of this level (%1) and above")
                                     .arg(levelNames().join(QLatin1String(", ")))
                                     .toUtf8();
const Option LEVEL = {"level", LEVEL_SUMMARY.constData(), "LEVEL", "debug"};
constexpr Option SINCE = {
    "since", "Only entries from this time on: \"2026-12-24 18:30\", 2026-12-24, or 2h before now", "TIME"};
constexpr Option UNTIL = {"until", "Only entries up to this time, or to the end of this day", "TIME"};
constexpr Option GREP = {"grep", "Only entries whose message has this regular expression; (?i) ignores case",
                         "PATTERN"};
constexpr Option FOLLOW = {"follow", "Go on with what is written from now on, until Ctrl-C"};
constexpr Option PASSWORD_ENV = {"password-env", "The password is the value of this environment variable",
                                 "VARIABLE"};
constexpr Option PASSWORD_FILE = {
    "password-file", "The password is the first line of this file; - is the standard input", "FILE"};
constexpr Option PASSWORD_ASK = {"password-ask", "Ask for the password on the terminal", nullptr, nullptr,
                                 "ask-password"};
constexpr Option NAMES = {"names", "Only the names, a line for each"};
constexpr Option OUTPUT = {"output", "Where to write the entries", "FOLDER", ".", "to"};
constexpr Option FORCE = {"force", "Replace files that exist already"};

const std::vector<Command> COMMANDS = {
    {"presets show",
     "[FILE]",
     "Show all presets as they are once FILE has been read, or as they are built in",
     {CHANGED, JSON},
     &showPresets},
    {"presets check",
     "FILE...",
     "Check the lines of preset files, protected or plain",
     {STRICT, JSON},
     &checkPresets},
    {"presets diff",
     "FILE [FILE]",
     "Show in which presets two files differ, or one from the built-in presets; ends with 1 if they do",
     {JSON},
     &diffPresets},
    {"presets describe",
     "PRESET",
     "Show the type, the default, the bounds and the partners of a preset",
     {JSON},
     &describePreset},
    {"presets template", "", "Show a preset file with all keys and their defaults", {}, &showPresetTemplate},
    {"presets dump", "FILE", "Show the text of a preset file, protected or plain", {}, &dumpPresets},
    {"presets build",
     "TEXT TARGET",
     "Check a plain preset file and write it as a protected one",
     {FORCE},
     &buildPresets},
    {"data encrypt",
     "FILE TARGET",
     "Write the content of FILE as one protected block; asks for a password that no option tells",
     {FORCE, PASSWORD_ENV, PASSWORD_FILE, PASSWORD_ASK},
     &encryptData},
    {"data decrypt",
     "FILE TARGET",
     "Write the content of a protected block; most wrong passwords show in its padding",
     {FORCE, PASSWORD_ENV, PASSWORD_FILE, PASSWORD_ASK},
     &decryptData},
    {"data list",
     "ARCHIVE",
     "Show the entries of an archive, their sizes in bytes as stored and as they really are, and whether "
     "they have the form of protected blocks",
     {NAMES, JSON},
     &listData},
    {"data test",
     "ARCHIVE",
     "Read every entry of an archive and check it; with a password, check its padding, too",
     {PASSWORD_ENV, PASSWORD_FILE, PASSWORD_ASK, JSON},
     &testData},
    {"data extract",
     "ARCHIVE [ENTRY...]",
     "Write all entries of an archive, or those named; without a password they are taken as they are",
     {OUTPUT, FORCE, PASSWORD_ENV, PASSWORD_FILE, PASSWORD_ASK},
     &extractData},
    {"data pack",
     "ARCHIVE FILE...",
     "Write a new archive of files, without their folders; with a password each is a protected block",
     {FORCE, PASSWORD_ENV, PASSWORD_FILE, PASSWORD_ASK},
     &packData},
    {"paths",
     "",
     "Show where the application keeps its files, and why there",
     {PROGRAM, ORGANIZATION, APPLICATION, JSON},
     &showPaths},
    {"state",
     "",
     "Show how the last run ended and when the application was last alive",
     {SETTINGS_FILE, ORGANIZATION, APPLICATION, JSON},
     &showState},
    {"report",
     "TARGET",
     "Write an archive for support: the last run, the settings without secrets, paths, presets that differ, "
     "the newest logs and versions; shows what it took",
     {EXCLUDE, FORCE, PROGRAM, SETTINGS_FILE, ORGANIZATION, APPLICATION, JSON},
     &writeReport},
    {"logs",
     "[FILE...]",
     "Show the entries of the application's logs, or of FILE; those of several logs in the order of their "
     "times",
     {LEVEL, SINCE, UNTIL, GREP, FOLLOW, ORGANIZATION, APPLICATION, JSON},
     &showLogs},
    {"settings list",
     "[GROUP]",
     "Show the settings of all groups, or of one, with their sub-groups",
     {SETTINGS_FILE, ORGANIZATION, APPLICATION, JSON},
     &listSettings},
    {"settings get",
     "GROUP KEY",
     "Show the value of a setting",
     {SETTINGS_FILE, ORGANIZATION, APPLICATION, JSON},
     &getSetting},
    {"settings set",
     "GROUP KEY VALUE",
     "Set a setting to the text VALUE; one like -5 needs -- before it, and options before that",
     {REWRITE, SETTINGS_FILE, ORGANIZATION, APPLICATION},
     &setSetting},
    {"settings remove",
     "GROUP [KEY]",
     "Remove a setting, or a group with all that is below it",
     {REWRITE, SETTINGS_FILE, ORGANIZATION, APPLICATION},
     &removeSetting},
    {"settings check",
     "",
     "Check the settings that the library knows: their keys, their values, and damaged lines",
     {SETTINGS_FILE, ORGANIZATION, APPLICATION, JSON},
     &checkSettings},
    {"colour",
     "[COLOUR]",
     "Show the colour of a black body of so many kelvins as linear light, the nearest one to a colour like "
     "#ffb16e, or all from 1000 to 12000 kelvins; the hex form is without gamma, too",
     {IMAGE, FORCE, JSON},
     &showColour},
    {"units",
     "[VALUE]",
     "Show all units, or convert a measured value and show it as the application does; -5 needs -- before "
     "it, and options before that",
     {FROM, TO, DIMENSION, JSON},
     &convertUnits},
};

const std::vector<Option> COMMON_OPTIONS = {
    {"help", "Show help and end"},
    {"version", "Show the version and end"},
};

} // namespace

const std::vector<Command>& commands()
{
    return COMMANDS;
}

const std::vector<Option>& commonOptions()
{
    return COMMON_OPTIONS;
}

std::vector<Option> optionsOf(const Command& command)
{
    std::vector<Option> options = command.options;
    options.insert(options.end(), commonOptions().begin(), commonOptions().end());
    return options;
}

} // namespace globalsctl
