// The one source that is compiled with Qt's deprecated interfaces switched on, whatever the project that
// builds us says of them: only they tell whether the name was set.
#undef QT_DISABLE_DEPRECATED_BEFORE
#define QT_DISABLE_DEPRECATED_BEFORE 0
#undef QT_NO_DEPRECATED_WARNINGS
#define QT_NO_DEPRECATED_WARNINGS

#include "globals/system/StandardLocations_p.h"

#include <QCoreApplication>
#include <QDesktopServices>

namespace TEKLUVA::StandardLocations {

QString applicationName()
{
    // Qt 4's data location ends in "/ORGANISATION/NAME", with the name as it was set.
    const QString name = QCoreApplication::applicationName();
    const QString end = QLatin1Char('/') + QCoreApplication::organizationName() + QLatin1Char('/') + name;
    return QDesktopServices::storageLocation(QDesktopServices::DataLocation).endsWith(end) ? name : QString();
}

} // namespace TEKLUVA::StandardLocations
