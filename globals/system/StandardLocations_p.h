#pragma once

#include <QString>

/// The desktop's folders as Qt 4 named them, because that is where the users' data lies. None of them needs
/// to exist.
namespace TEKLUVA::StandardLocations {

QString data();
/// The data folder of another application of the same organisation.
QString dataOf(const QString& application);
QString home();
QString pictures();
QString cache();
QString applications();

/// The application's name as it was set, empty when it was not. Qt itself would return the name of the
/// executable then, and so lead to folders that no earlier version has used.
QString applicationName();

} // namespace TEKLUVA::StandardLocations
