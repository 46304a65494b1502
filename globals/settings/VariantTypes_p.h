#pragma once

#include <QByteArray>

/// What the versions of Qt spell differently about the types in a QVariant.
namespace TEKLUVA::VariantTypes {

/// The number of the type called \p name, that of an unknown type for none.
int numberOf(const QByteArray& name);

} // namespace TEKLUVA::VariantTypes
