#pragma once

#include "globals/system/System_p.h"

#include <ioapi.h>

namespace TEKLUVA {

/// The functions with which minizip reads an archive through a buffer. With its own ones it seeks before each
/// header, which throws away what the C library has read ahead, and so costs two system calls per entry.
///
/// They read \p file, whatever name minizip gives them; it must outlive what is opened with them.
zlib_filefunc64_def readAheadFunctions(const System::FileHandle& file);

} // namespace TEKLUVA
