#pragma once

#include <ioapi.h>

namespace TEKLUVA {

/// The functions with which minizip reads an archive through a buffer. With its own ones it seeks before each
/// header, which throws away what the C library has read ahead, and so costs two system calls per entry.
zlib_filefunc64_def readAheadFunctions();

} // namespace TEKLUVA
