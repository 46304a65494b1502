#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace TEKLUVA {

/// In characters. There is no room for a longer one after the number.
inline constexpr int LONGEST_UNIT = 13;

/// \p value with at most \p decimals decimals, followed by a blank and \p unit if there is one. The decimal
/// separator is a comma in every locale; trailing zeros are dropped. The digits are those of
/// QString::number(): halves are rounded away from zero, and a negative value that rounds to zero is "-0".
QString decimalText(double value, unsigned int decimals, std::optional<QStringView> unit = std::nullopt);

} // namespace TEKLUVA
