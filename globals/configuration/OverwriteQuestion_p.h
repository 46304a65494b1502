#pragma once

#include "globals/system/FileTree_p.h"

namespace TEKLUVA {

/// Asks the user in a message box whether \p file, which exists, may be replaced. Where nobody can be asked,
/// for want of a QApplication or on another thread than its own, that is a failure.
FileTree::Overwrite askToOverwrite(const QString& file);

} // namespace TEKLUVA
