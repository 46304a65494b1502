#pragma once

#include <QMetaType>
#include <QVariant>

/// What the versions of Qt spell differently about types.
namespace TestTypes {

inline int numberOf(const QByteArray& name)
{
    return QMetaType::type(name.constData());
}

/// Converts \p value in place; false where there is no way.
inline bool convert(QVariant& value, int type)
{
    return value.convert(type);
}

} // namespace TestTypes
