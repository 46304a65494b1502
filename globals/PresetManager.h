#pragma once

#include "globals/PresetValue.h"
#include "globals/globals_export.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <limits>
#include <memory>
#include <optional>

namespace TEKLUVA {

/// One line of a preset file.
struct PresetLine
{
    QString key;
    QString value;
};

/// A preset without its value, for people.
struct PresetDescription
{
    E_PresetValue value = E_PV_NONE;
    QString key;
    /// The type of the default: "double", "float", "int", "bool" or "string".
    QString type;
    /// The constraint in words, "min_room_height to max_room_height".
    QString bounds;
};

/// What limits a preset, for programs; PresetDescription::bounds has it in words.
struct PresetBounds
{
    /// \name The range of a value when it is set
    /// The presets at its ends; E_PV_NONE where there are none. Then the numbers, which are infinite for a
    /// preset without bounds.
    /// @{
    E_PresetValue lower = E_PV_NONE;
    E_PresetValue upper = E_PV_NONE;
    double min = -std::numeric_limits<double>::infinity();
    double max = std::numeric_limits<double>::infinity();
    /// @}

    /// \name The other end
    /// For a preset that is an end of such a range; E_PV_NONE for every other one.
    /// @{
    E_PresetValue minimum = E_PV_NONE; ///< that belongs to this maximum
    E_PresetValue maximum = E_PV_NONE; ///< that belongs to this minimum
    /// @}
};

/// The tunable constants of the application: built-in defaults, overridden by the protected file
/// "presets.dat".
///
///     PresetManager::getInstance()->init();                       // throws Exception, see there
///     const double height = PresetManager::getPreset(E_PV_ROOM_HEIGHT).toDouble();
///
/// Bounds: a value is clamped to its bounds when it is written. A minimum is only ever raised and a maximum
/// only ever lowered, so that a preset file can narrow the built-in range but not widen it. A bound that
/// passes its partner moves the partner along, where it has one. A changed bound of the scene box clamps the
/// navigation values again; all other values stay as they were written.
///
/// Types: a value keeps the type it was given in, which is text when it comes from a file, and int, float,
/// double or bool otherwise. Bounds compare values as numbers. Text that is no number counts as 0; "nan" is
/// one, and no bound holds it.
///
/// Threads: not thread-safe. The start-up thread fills it; afterwards any thread may read.
///
/// Ownership: getInstance() makes it, and nothing in the library deletes it.
class GLOBALS_EXPORT PresetManager
{
    Q_DISABLE_COPY(PresetManager)

public:
    /// The one instance, made empty by the first call.
    static PresetManager* getInstance();
    ~PresetManager();

    /// \name Start-up
    /// @{

    /// Fills the map of keys, installs the defaults and reads "presets.dat" in the application's folder.
    /// Throws Exception: E_ET_MISSING_DATA when the file is missing; E_ET_FATAL when it is an archive, or for
    /// a malformed line or an unknown key. Presets before that line stay in force. When the content cannot be
    /// read, nothing is overridden and the active log gets a warning.
    void init();

    /// The steps of init(), for other files and for text. Those that read throw as init() does.
    void fillNameMap();
    void setInitialPresets();
    void readFile(const QString& path);
    void readText(const QString& text);
    void readLine(const QString& line);
    /// Whether the last init() or readFile() has read a text from the file, to its end. If nothing was thrown
    /// and it has not, the file is empty, cut or not protected, and an application may tell its user.
    bool isFromFile() const;

    /// The decrypted text of a protected preset file. Throws as init() does for the file. Empty when the
    /// content cannot be read.
    static QString textOfFile(const QString& path);
    /// The content of a protected preset file with \p text, which is UTF-8 and not checked. When the text
    /// cannot be encrypted, for example for want of memory, the result has 17 bytes and no text.
    static QByteArray protectedContent(const QByteArray& text);
    /// The two sides of a line KEY=VALUE. Nothing for an empty line and for a comment ("#"). Throws Exception
    /// for a malformed line.
    static std::optional<PresetLine> parseLine(const QString& line);
    /// @}

    /// \name Reading
    /// @{

    /// The number of the preset \p key, which may be in upper and lower case. E_PV_NONE for an unknown key,
    /// and for every key before fillNameMap().
    E_PresetValue getKey(const QString& key) const;
    /// Whether a value is stored. False for a number that is no preset.
    static bool hasPreset(const E_PresetValue& value);
    /// The stored value. For a preset without one, and for a number that is no preset, the fallback entry,
    /// which is invalid.
    static QVariant& getPreset(const E_PresetValue& value);
    /// All presets that have a key, in the order of their numbers.
    static QList<PresetDescription> describePresets();
    /// What limits \p value; nothing for a number that is no preset.
    static PresetBounds boundsOf(const E_PresetValue& value);
    /// @}

    /// \name Writing with the rule of the preset
    /// For text that is no key an Exception with E_ET_FATAL is thrown; for a number that is no preset nothing
    /// happens.
    /// @{
    void setPreset(const QString& key, const QVariant& value);
    void setPreset(const E_PresetValue& key, const QVariant& value);
    /// @}

    /// \name Writing with a rule given by the caller
    /// The rules of setPreset(). Any key may be E_PV_NONE or another number that is no preset: the step that
    /// would use it is left out. So is one that would read a bound without a value.
    /// @{

    /// Unchecked.
    void setValue(const E_PresetValue& key, const QVariant& value);
    /// Clamped between two presets.
    void setValue(const E_PresetValue& key, const QVariant& value, const E_PresetValue& minKey,
                  const E_PresetValue& maxKey);
    /// Clamped between two numbers.
    void setValue(const E_PresetValue& key, const QVariant& value, const double& min, const double& max);
    /// Raises the minimum \p key, the maximum \p maxKey and the value \p valueKey to \p value where they are
    /// below it. A minimum or value that is not stored yet becomes \p value.
    void setMinBound(const E_PresetValue& key, const QVariant& value, const E_PresetValue& maxKey,
                     const E_PresetValue& valueKey);
    /// Lowers the maximum \p key, the minimum \p minKey and the value \p valueKey to \p value where they are
    /// above it. A maximum or value that is not stored yet becomes \p value.
    void setMaxBound(const E_PresetValue& key, const QVariant& value, const E_PresetValue& minKey,
                     const E_PresetValue& valueKey);
    /// @}

private:
    class Private;

    PresetManager();

    static PresetManager* __instance;

    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
