#pragma once

#include "globals/ProgressSnapshot.h"

constexpr int PACKED_FILES = 200;
constexpr int PACKED_FILE_SIZE = 256 * 1024; ///< bytes

/// Writes files, packs them into a protected archive and checks it, in three steps of the state handler's
/// process, until the user asks for an abort. Whatever the result, all files are gone afterwards. For any
/// thread.
TEKLUVA::E_ProcessResult packAndCheck();
