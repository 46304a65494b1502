#pragma once

#include <QMetaType>
#include <QVariant>

/// What the versions of Qt spell differently about types.
namespace TestTypes {

inline int numberOf(const QByteArray& name)
{
    return QMetaType::fromName(name).id();
}

/// Converts \p value in place; false where there is no way.
inline bool convert(QVariant& value, int type)
{
    return value.convert(QMetaType(type));
}

} // namespace TestTypes
