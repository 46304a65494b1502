#pragma once

#include <QtGlobal>

#include <string>

/// The one place where logs ask the configuration, which in turn reports its failures to the active log. Each
/// needs the other: a log lies in a folder of the configuration, and its entries carry the server's time.
///
/// A folder that cannot be made is reported to the active log in the middle of the call. So no lock of a log
/// may be held when the folder is asked for. Nothing is reported when the time is asked for.
namespace TEKLUVA::LogConfiguration {

/// The log folder in UTF-8, ending in "/". It is made if missing.
std::string folder();

/// By the server's clock once that is known, in milliseconds since the epoch.
qint64 currentMSecs();

} // namespace TEKLUVA::LogConfiguration
