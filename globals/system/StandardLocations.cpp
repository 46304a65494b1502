// The one source that is compiled with Qt's deprecated interfaces switched on, whatever the project that
// builds us says of them: QDesktopServices still returns Qt 4's folders, QStandardPaths others.
#undef QT_DISABLE_DEPRECATED_BEFORE
#define QT_DISABLE_DEPRECATED_BEFORE 0
#undef QT_NO_DEPRECATED_WARNINGS
#define QT_NO_DEPRECATED_WARNINGS

#include "globals/system/StandardLocations_p.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QStandardPaths>

namespace TEKLUVA::StandardLocations {

QString data()
{
    return QDesktopServices::storageLocation(QDesktopServices::DataLocation);
}

QString home()
{
    return QDesktopServices::storageLocation(QDesktopServices::HomeLocation);
}

QString pictures()
{
    return QDesktopServices::storageLocation(QDesktopServices::PicturesLocation);
}

QString cache()
{
    // The one location that falls back to the executable's name; without a name Qt 4 ended at the
    // organisation.
    if (applicationName().isEmpty()) {
        return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QLatin1Char('/')
               + QCoreApplication::organizationName();
    }
    return QDesktopServices::storageLocation(QDesktopServices::CacheLocation);
}

QString applications()
{
    return QDesktopServices::storageLocation(QDesktopServices::ApplicationsLocation);
}

QString applicationName()
{
    // The data location ends in "/ORGANISATION/NAME", with the name as it was set.
    const QString name = QCoreApplication::applicationName();
    return data().endsWith(QLatin1Char('/') + QCoreApplication::organizationName() + QLatin1Char('/') + name)
               ? name
               : QString();
}

} // namespace TEKLUVA::StandardLocations
