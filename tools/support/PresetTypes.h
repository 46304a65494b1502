#pragma once

#include <QJsonValue>
#include <QString>
#include <QVariant>

namespace globalsctl {

/// How the values of a preset type are written and read.
struct PresetType
{
    const char* name;
    const char* wanted; ///< in words, "a number"
    /// Whether the application makes of \p text what its writer meant.
    bool (*accepts)(const QString& text);
    /// What \p value, text or the type itself, comes down to: equal for equal values.
    QJsonValue (*normal)(const QVariant& value);
};

/// The type that a preset's description names.
const PresetType& presetType(const QString& name);

/// A normal value as people write it.
QString inWords(const QJsonValue& normal);

} // namespace globalsctl
