# Cross toolchain for Windows: MinGW-w64 with the POSIX thread model, as Debian packages it.
# MINGW_ARCH selects x86_64 (the default) or i686.
set(CMAKE_SYSTEM_NAME Windows)
if(NOT MINGW_ARCH)
  set(MINGW_ARCH x86_64)
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MINGW_ARCH)
set(CMAKE_SYSTEM_PROCESSOR ${MINGW_ARCH})

set(CMAKE_C_COMPILER ${MINGW_ARCH}-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER ${MINGW_ARCH}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${MINGW_ARCH}-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${MINGW_ARCH}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Only the 64-bit build is run under Wine; the 32-bit one is built and inspected.
if(MINGW_ARCH STREQUAL "x86_64")
  set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/wine)
endif()
