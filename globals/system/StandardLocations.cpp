#include "globals/system/StandardLocations_p.h"

#include <QCoreApplication>
#include <QStandardPaths>

namespace TEKLUVA::StandardLocations {

QString data()
{
    return dataOf(applicationName());
}

QString dataOf(const QString& application)
{
    // Not Qt's own location for the data of an application, which lacks Qt 4's folder "data".
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QLatin1String("/data/")
           + QCoreApplication::organizationName() + QLatin1Char('/') + application;
}

QString home()
{
    return QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
}

QString pictures()
{
    return QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
}

QString cache()
{
    // The one location that falls back to the executable's name; without a name Qt 4 ended at the
    // organisation.
    if (applicationName().isEmpty()) {
        return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QLatin1Char('/')
               + QCoreApplication::organizationName();
    }
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
}

QString applications()
{
    return QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
}

} // namespace TEKLUVA::StandardLocations
