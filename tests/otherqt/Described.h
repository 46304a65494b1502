#pragma once

#include <QVariant>

/// A setting as both versions of Qt see it: the key, the type and a text, each ended by a zero byte. What
/// else there is in a value they turn into texts in ways of their own.
inline QByteArray described(const QString& key, const QVariant& value)
{
    const bool isText = value.userType() == QMetaType::QString;
    return key.toUtf8() + '\0' + value.typeName() + '\0' + (isText ? value.toString().toUtf8() : QByteArray())
           + '\0';
}
