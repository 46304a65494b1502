#pragma once

#include "globals/ProgressSnapshot.h"

constexpr int PACKED_FILES = 200;

/// Packs files into a protected archive and checks it, in two steps of the state handler's
/// process, until the user asks for an abort. Whatever the result, the archive is gone afterwards. For any
/// thread.
TEKLUVA::E_ProcessResult packAndCheck();
