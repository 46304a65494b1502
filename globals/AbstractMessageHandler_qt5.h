#pragma once

#include <QAbstractMessageHandler>
#include <QSourceLocation>

namespace TEKLUVA {

/// \name Qt's own, to which the engine of XML queries and schema validations reports
/// @{
using AbstractMessageHandler = QAbstractMessageHandler;
using SourceLocation = QSourceLocation;
/// @}

} // namespace TEKLUVA
