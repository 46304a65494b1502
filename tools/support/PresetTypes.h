#pragma once

#include <QJsonValue>
#include <QString>
#include <QVariant>

namespace globalsctl {

/// How the values of a preset type are written and read.
struct PresetType
{
    const char* name;
    const char* wanted; ///< in words: "a number"
    /// Whether the application reads \p text as what its writer meant.
    bool (*accepts)(const QString& text);
    /// The normal form of \p value, which is text or of the type itself: equal for equal values.
    QJsonValue (*normal)(const QVariant& value);
};

/// The type with the name that a preset's description gives; text for any other name.
const PresetType& presetType(const QString& name);

/// A normal value as people write it.
QString inWords(const QJsonValue& normal);

} // namespace globalsctl
