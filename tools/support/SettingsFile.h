#pragma once

#include "globals/Settings.h"

#include <QString>

class QCommandLineParser;
class QJsonValue;

namespace globalsctl {

/// The settings that a command works on, and what it was asked for. The arguments of the command are GROUP,
/// KEY and VALUE, as many of them as it takes.
struct SettingsRequest
{
    /// Throws UsageError for a GROUP or KEY that is given but empty: to the settings that means the whole
    /// group, or the whole file. Throws Failure for a file that cannot be read.
    explicit SettingsRequest(const QCommandLineParser& line);

    /// Throws Failure that names the group, or the key of the group, as absent.
    [[noreturn]] void failAsGroupAbsent() const;
    [[noreturn]] void failAsKeyAbsent() const;

    /// Prints an error for each damaged line of the file. False when there is one.
    bool tellDamage() const;
    /// Throws Failure for a file that a change would rewrite without its damaged lines, unless that is
    /// forced.
    void requireWhole() const;
    /// Throws Failure, with the reason, when a change is not on disk.
    void requireWritten() const;

    QString file;
    TEKLUVA::Settings settings;
    QString group; ///< empty where it is left out, as the next two
    QString key;
    QString value;
    bool isForced;
};

/// Throws Failure, with the reason, for a \p file that \p settings could not read.
void requireRead(const TEKLUVA::Settings& settings, const QString& file);

/// \p value in words; what is no text as Qt's debug output shows it.
QString textOfSetting(const QVariant& value);
/// The same, or an array of texts for a list.
QJsonValue jsonOfSetting(const QVariant& value);
/// "GROUP/KEY=VALUE", in one line, with control characters as escapes.
QString lineOfSetting(const QString& path, const QVariant& value);

} // namespace globalsctl
