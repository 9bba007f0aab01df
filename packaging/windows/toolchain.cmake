# Cross-building for Windows with Debian's mingw-w64 compilers, those with POSIX threads: std::thread and std::mutex work.
# OVELDRA_WINDOWS_ARCH is x86_64 or i686.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES OVELDRA_WINDOWS_ARCH)

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${OVELDRA_WINDOWS_ARCH})
set(triplet ${OVELDRA_WINDOWS_ARCH}-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

# Programs are the build machine's, headers and libraries never.
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
