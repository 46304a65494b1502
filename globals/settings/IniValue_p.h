#pragma once

#include <QByteArray>
#include <QMap>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace TEKLUVA {

/// A value in an INI file of Qt: what stands after the equals sign, one text or those of a list. What they
/// mean, such as "@Size(1 2)", is only found out when somebody asks. So whatever a file holds is written
/// again as it was, also what is damaged or of a type that nobody here knows.
///
/// The texts are those that QSettings of Qt 5.15 writes, whatever version of Qt this is.
class IniValue
{
public:
    IniValue() = default;
    /// As in a file, with quotes and escapes. Without UTF-8 each byte is a character.
    IniValue(QByteArray bytes, bool isUtf8);
    /// \p variant must be storable. It is kept, because not every text tells its type: 1 is a text, too.
    explicit IniValue(const QVariant& variant);

    /// Without quotes and escapes.
    QStringList texts() const;
    /// Invalid for what is damaged, is of an unknown type, or could do harm.
    QVariant toVariant() const;
    bool isReadable() const;
    /// Whether it is readable at first sight: nothing in it means anything but itself.
    bool isPlain() const;

    /// Whether both are the same in a file.
    bool operator==(const IniValue& other) const;

    /// Whether \p variant can be written. One with a time in a zone that the system does not know cannot: Qt
    /// ends the process.
    [[nodiscard]] static bool isStorable(const QVariant& variant);

private:
    QByteArray m_bytes;
    bool m_isUtf8 = false;
    std::optional<QVariant> m_variant;
};

/// By full key, "Group/key".
using IniValues = QMap<QString, IniValue>;

} // namespace TEKLUVA
