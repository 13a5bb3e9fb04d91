# Cross compiling the 64-bit DLL with MinGW-w64 (Debian's packages). The
# -posix flavour of the compilers: GoogleTest needs std::mutex and threads.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(BRINDLE_MINGW_TRIPLET x86_64-w64-mingw32)

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

set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
