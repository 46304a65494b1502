#include "globals/system/StandardLocations_p.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <array>

#include <pwd.h>
#include <unistd.h>

namespace TEKLUVA::StandardLocations {

namespace {

/// Qt's location, unless it would start from a relative folder, which \p variable must not name, or without
/// HOME from the root folder. Then it is \p inHome of the user's home.
QString located(QStandardPaths::StandardLocation location, const char* variable, const char* inHome)
{
    const QString chosen = QFile::decodeName(qgetenv(variable));
    const bool isSafe =
        chosen.isEmpty() ? !qEnvironmentVariableIsEmpty("HOME") : QDir::isAbsolutePath(chosen);
    return isSafe ? QStandardPaths::writableLocation(location) : home() + QLatin1String(inHome);
}

/// The home folder that the system has on record for the user of this process; empty if it has none.
QString homeOfAccount()
{
    constexpr std::size_t LARGEST_RECORD = std::size_t{16} * 1024;
    std::array<char, LARGEST_RECORD> texts; // NOLINT(cppcoreguidelines-pro-type-member-init)
    passwd account = {};
    passwd* found = nullptr; // stays so when there is none, and on failure
    ::getpwuid_r(::getuid(), &account, texts.data(), texts.size(), &found);
    return found ? QFile::decodeName(found->pw_dir) : QString();
}

QString genericCache()
{
    return located(QStandardPaths::GenericCacheLocation, "XDG_CACHE_HOME", "/.cache");
}

} // namespace

QString dataOf(const QString& application)
{
    // Not Qt's own location for the data of an application, which lacks Qt 4's folder "data".
    return located(QStandardPaths::GenericDataLocation, "XDG_DATA_HOME", "/.local/share")
           + QLatin1String("/data/") + QCoreApplication::organizationName() + QLatin1Char('/') + application;
}

QString home()
{
    const QString known = qEnvironmentVariableIsEmpty("HOME") ? homeOfAccount() : QString();
    return known.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::HomeLocation) : known;
}

QString cache()
{
    // The one location that falls back to the executable's name; without a name Qt 4 ended at the
    // organisation.
    if (applicationName().isEmpty())
        return genericCache() + QLatin1Char('/') + QCoreApplication::organizationName();
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return genericCache() + QStandardPaths::writableLocation(QStandardPaths::CacheLocation).mid(base.size());
}

} // namespace TEKLUVA::StandardLocations
