#include "globals/system/StandardLocations_p.h"

#include <QStandardPaths>

namespace TEKLUVA::StandardLocations {

QString data()
{
    return dataOf(applicationName());
}

QString pictures()
{
    return QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
}

QString applications()
{
    return QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
}

} // namespace TEKLUVA::StandardLocations
