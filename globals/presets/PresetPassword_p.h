#pragma once

#include <QString>

namespace TEKLUVA {

/// The password of protected preset files, put together from single characters on each call. The library's
/// file does not contain it as a whole, and holds its characters in another order.
QString presetPassword();

} // namespace TEKLUVA
