# Cross compiling the 64-bit DLL with MinGW-w64 (Debian's packages). The
# -posix flavour of the compilers: GoogleTest needs std::mutex and threads.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(BRINDLE_MINGW_TRIPLET x86_64-w64-mingw32)
set(BRINDLE_WINE_LOADER /usr/lib/wine/wine64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
