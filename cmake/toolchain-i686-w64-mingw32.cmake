# Cross compiling the 32-bit DLL with MinGW-w64 (Debian's packages). The
# -posix flavour of the compilers: GoogleTest needs std::mutex and threads.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(BRINDLE_MINGW_TRIPLET i686-w64-mingw32)
set(BRINDLE_WINE_LOADER /usr/lib/wine/wine)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)

# SSE2 arithmetic, so that Double results do not depend on the precision the
# caller left the x87 unit in (VB6 sets it to 53 bits, other hosts to 64).
# Results still come back on the x87 stack, as the calling convention wants.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
