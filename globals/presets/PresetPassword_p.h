#pragma once

#include <QString>

namespace TEKLUVA {

/// The password of protected preset files, put together from single characters on each call. It stands
/// nowhere whole in the library, and its pieces do not lie there in its order.
QString presetPassword();

} // namespace TEKLUVA
