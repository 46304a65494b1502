#pragma once

#include "globals/LastRun.h"

#include <QVariant>

namespace TEKLUVA {

/// The values of the settings group "Application" that name the process which records \p state: the calling
/// one while its run goes on. At its end they are invalid, which removes their keys.
QVariantMap processRecord(E_RuntimeState state);

/// Whether the record \p applicationSettings is of a run that goes on in another process.
bool isRunOfOther(const QVariantMap& applicationSettings);

} // namespace TEKLUVA
