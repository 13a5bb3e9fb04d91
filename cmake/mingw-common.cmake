# What both MinGW-w64 toolchains share; each toolchain file sets
# BRINDLE_MINGW_TRIPLET and BRINDLE_WINE_LOADER first.
set(CMAKE_SYSTEM_NAME Windows)

set(CMAKE_C_COMPILER ${BRINDLE_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${BRINDLE_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${BRINDLE_MINGW_TRIPLET}-windres)
set(CMAKE_OBJDUMP ${BRINDLE_MINGW_TRIPLET}-objdump)

set(CMAKE_FIND_ROOT_PATH /usr/${BRINDLE_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# zlib goes into the DLL (libz.a, never the import library of zlib1.dll).
set(ZLIB_USE_STATIC_LIBS ON)

# Everything static: the DLL and the test programs need no libgcc,
# libstdc++ or libwinpthread DLL beside them.
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

set(CMAKE_CROSSCOMPILING_EMULATOR ${BRINDLE_WINE_LOADER})
