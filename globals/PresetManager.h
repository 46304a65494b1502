#pragma once

#include "globals/PresetValue.h"
#include "globals/globals_export.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>

#include <array>
#include <optional>

namespace TEKLUVA {

/// One line of a preset file.
struct PresetLine
{
    QString key;
    QString value;
};

/// What is known of a preset beside its value, for people.
struct PresetDescription
{
    E_PresetValue value = E_PV_NONE;
    QString key;
    /// The type of the built-in value: "double", "float", "int", "bool" or "string".
    QString type;
    /// What bounds the value, in words.
    QString bounds;
};

/// The tunable constants of the application: built-in defaults, overridden by the protected file
/// "presets.dat". A value is clamped to its bounds when it is written. A bound takes its partner along, where
/// it has one, and of the values between them those of the navigation; the others stay as they were written.
/// A minimum is only ever raised and a maximum only ever lowered, so that a preset file can narrow the
/// built-in range and never widen it.
///
///     PresetManager::getInstance()->init();                       // throws Exception for a bad file
///     const double height = PresetManager::getPreset(E_PV_ROOM_HEIGHT).toDouble();
///
/// Values are kept in the type they were given in: text from a file, int, float or double. Bounds compare
/// them as numbers; text that is no number counts as 0.
///
/// Not thread-safe: filled by the start-up thread and read afterwards, then from any thread.
class GLOBALS_EXPORT PresetManager
{
    Q_DISABLE_COPY(PresetManager)

public:
    /// The one instance, made empty on the first call. It lives until it is deleted or the process ends.
    static PresetManager* getInstance();
    ~PresetManager();

    /// \name Start-up
    /// @{

    /// Installs the defaults and reads "presets.dat" in the application's folder. Throws Exception:
    /// E_ET_MISSING_DATA without the file, E_ET_FATAL when it is an archive or holds a malformed line or an
    /// unknown key; the presets before that line stay in force. Content that cannot be read is no lines, with
    /// a warning.
    void init();
    /// The pieces of init(), for other files and for text. Those that read throw as init() does.
    void fillNameMap();
    void setInitialPresets();
    void readFile(const QString& path);
    void readText(const QString& text);
    void readLine(const QString& line);
    /// The decrypted text of a protected preset file.
    static QString textOfFile(const QString& path);
    /// The content of a protected preset file with \p text, UTF-8, whose lines are not checked. Its first 17
    /// bytes only when it could not be encrypted, such as for want of memory.
    static QByteArray protectedContent(const QByteArray& text);
    /// The two sides of a line KEY=VALUE; nothing for an empty line and a comment ("#").
    static std::optional<PresetLine> parseLine(const QString& line);
    /// @}

    /// \name Reading
    /// @{

    /// The value of \p key in any case; E_PV_NONE for an unknown key, and for every key before fillNameMap().
    E_PresetValue getKey(const QString& key) const;
    static bool hasPreset(const E_PresetValue& value);
    /// The stored entry itself, or the invalid fallback entry for a preset without a value.
    static QVariant& getPreset(const E_PresetValue& value);
    /// All presets that have a key, by number.
    static QList<PresetDescription> describePresets();
    /// @}

    /// \name Checked writing
    /// Both throw Exception, E_ET_FATAL, for a key or number that is no preset.
    /// @{
    void setPreset(const QString& key, const QVariant& value);
    void setPreset(const E_PresetValue& key, const QVariant& value);
    /// @}

    /// \name Writing by hand
    /// What setPreset() is made of. A bound or partner outside 1 to 101, or without a value, is left out.
    /// @{
    void setValue(const E_PresetValue& key, const QVariant& value);
    /// Clamped between two presets.
    void setValue(const E_PresetValue& key, const QVariant& value, const E_PresetValue& minKey,
                  const E_PresetValue& maxKey);
    /// Clamped between two numbers.
    void setValue(const E_PresetValue& key, const QVariant& value, const double& min, const double& max);
    /// Raises a minimum, and with it the maximum \p maxKey and the value \p valueKey where they are below.
    void setMinBound(const E_PresetValue& key, const QVariant& value, const E_PresetValue& maxKey,
                     const E_PresetValue& valueKey);
    /// Lowers a maximum, and with it the minimum \p minKey and the value \p valueKey where they are above.
    void setMaxBound(const E_PresetValue& key, const QVariant& value, const E_PresetValue& minKey,
                     const E_PresetValue& valueKey);
    /// @}

private:
    PresetManager() = default;
    void raise(const E_PresetValue& key, const QVariant& value);
    void lower(const E_PresetValue& key, const QVariant& value);

    static PresetManager* __instance;

    /// By number, from 0 on. An array, because presets are asked for in loops over geometry.
    std::array<std::optional<QVariant>, E_PV_LIGHT_QUADRATIC_ATTENUATION + 1> m_presets;
    QHash<QString, E_PresetValue> m_values; ///< by key
};

} // namespace TEKLUVA
