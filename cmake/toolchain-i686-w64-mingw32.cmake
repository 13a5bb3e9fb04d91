# Cross compiling the 32-bit DLL with MinGW-w64 (Debian's packages). The
# -posix flavour of the compilers: GoogleTest needs std::mutex and threads.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(BRINDLE_MINGW_TRIPLET i686-w64-mingw32)

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

# SSE2 arithmetic, so that Double results do not depend on the precision the
# caller left the x87 unit in (VB6 sets it to 53 bits, other hosts to 64).
# Results still come back on the x87 stack, as the calling convention wants.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")

# Everything static: the DLL and the test programs need no libgcc,
# libstdc++ or libwinpthread DLL beside them.
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine)
