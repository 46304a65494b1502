# Builds for 64-bit Windows with Debian's mingw-w64. scripts/windows makes the libraries that it needs, in the folder
# GLOBALS_WINDOWS_CACHE of the environment.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(target x86_64-w64-mingw32)
# The one whose standard library has threads.
set(CMAKE_C_COMPILER ${target}-gcc-posix)
set(CMAKE_CXX_COMPILER ${target}-g++-posix)
set(CMAKE_RC_COMPILER ${target}-windres)

set(cache "$ENV{GLOBALS_WINDOWS_CACHE}")
if(cache STREQUAL "")
    set(cache $ENV{HOME}/.cache/globals-windows)
endif()
# The first two have Qt, and Crypto++ and minizip; the last has the compiler's own libraries.
set(CMAKE_FIND_ROOT_PATH ${cache}/qt ${cache}/libraries /usr/${target})
set(CMAKE_PREFIX_PATH ${cache}/qt ${cache}/libraries)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${cache}/libraries/lib/pkgconfig:/usr/${target}/lib/pkgconfig)
set(ENV{PKG_CONFIG_PATH} "")

set(CMAKE_CROSSCOMPILING_EMULATOR wine)
