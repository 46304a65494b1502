#pragma once

#include <QString>

/// The desktop's folders as Qt 4 named them, because that is where the users' data lies. None of them needs
/// to exist.
namespace TEKLUVA::StandardLocations {

QString data();
QString home();
QString pictures();
QString cache();
QString applications();

/// The application's name as it was set, empty when it was not. Qt 5 itself would answer with the name of the
/// executable, and so lead to folders that no earlier version has used.
QString applicationName();

} // namespace TEKLUVA::StandardLocations
