#include "globals/settings/VariantTypes_p.h"

#include <QMetaType>

namespace TEKLUVA::VariantTypes {

int numberOf(const QByteArray& name)
{
    return QMetaType::type(name.constData());
}

} // namespace TEKLUVA::VariantTypes
