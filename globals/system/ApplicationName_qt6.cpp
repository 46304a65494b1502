#include "globals/system/StandardLocations_p.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace TEKLUVA::StandardLocations {

QString applicationName()
{
    // Qt 6 does not tell a name that was set from the executable's, which it returns otherwise. Where they
    // are the same it counts as set if there is data under it: with Qt 5 such an application has made that
    // folder.
    const QString name = QCoreApplication::applicationName();
    const bool isRunning = QCoreApplication::instance() != nullptr;
    const bool isExecutable =
        isRunning && name == QFileInfo(QCoreApplication::arguments().value(0)).fileName();
    return isExecutable && !QFileInfo::exists(dataOf(name)) ? QString() : name;
}

} // namespace TEKLUVA::StandardLocations
