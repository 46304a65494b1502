#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace TEKLUVA {

/// \p value with at most \p decimals decimals behind a comma, in every locale, without trailing zeros, and a
/// blank and \p unit behind it if there is one. The digits are those of QString::number(): halves are rounded
/// away from zero, and what rounds to zero from below stays "-0".
QString decimalText(double value, unsigned int decimals, std::optional<QStringView> unit = std::nullopt);

} // namespace TEKLUVA
