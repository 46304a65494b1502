#include "globals/system/StandardLocations_p.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace TEKLUVA::StandardLocations {

QString dataOf(const QString& application)
{
    // Qt 4 left out what was not set, and had no folder "data" here.
    QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    for (const QString& name : {QCoreApplication::organizationName(), application}) {
        if (!name.isEmpty())
            folder += QLatin1Char('/') + name;
    }
    return folder;
}

QString home()
{
    return QDir::homePath();
}

QString cache()
{
    return data() + QLatin1String("/cache");
}

} // namespace TEKLUVA::StandardLocations
