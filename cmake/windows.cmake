# The Windows DLLs, cross-built with MinGW-w64 (presets win32 and win64).
# Included by the top-level CMakeLists.txt right after the `brindle` target
# is defined, when the target system is Windows.
#
#   BRINDLE32P.dll  32-bit, __stdcall, every export under its plain name,
#                   bound to name@N by the generated module-definition file
#                   so that a definition whose stack size differs from the
#                   list fails the link (--disable-stdcall-fixup)
#   BRINDLE64P.dll  64-bit, plain names
#
# Both link the C and C++ runtimes, winpthread and zlib statically (the
# toolchain files pass -static), so that they import system DLLs only.

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(BRINDLE_DLL_NAME BRINDLE32P)
    set(BRINDLE_BITS 32)
else()
    set(BRINDLE_DLL_NAME BRINDLE64P)
    set(BRINDLE_BITS 64)
endif()
set(BRINDLE_DEF_FILE ${BRINDLE_GENERATED}/${BRINDLE_DLL_NAME}.def)

# The DLL, the test programs and the demo side by side, so that each program
# finds the DLL the way a VB program finds it: in its own folder.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})

# The system libraries the platform layer calls.
set(BRINDLE_SYSTEM_LIBS oleaut32 ole32 advapi32 user32 shell32 ws2_32 kernel32)

set_target_properties(brindle PROPERTIES
    OUTPUT_NAME ${BRINDLE_DLL_NAME}
    PREFIX ""
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}
    LINK_DEPENDS ${BRINDLE_DEF_FILE})
target_link_options(brindle PRIVATE
    ${BRINDLE_DEF_FILE}
    -Wl,--disable-stdcall-fixup
    -Wl,--no-undefined
    # Nothing but the listed names: no auto-export of every global, nothing
    # re-exported from the static runtime libraries.
    -Wl,--exclude-all-symbols
    # No DWARF debug information in the DLL users get (no Windows debugger
    # reads it; it would make the DLL ten times larger). The tests run this
    # very file, and the package ships it.
    -s)
target_link_libraries(brindle PRIVATE ${BRINDLE_SYSTEM_LIBS})

# The version resource Explorer shows (Properties > Details); the version is
# the project's, set once in the top-level CMakeLists.txt.
enable_language(RC)
configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${BRINDLE_GENERATED}/version.rc @ONLY)
target_sources(brindle PRIVATE ${BRINDLE_GENERATED}/version.rc)
# brindle_static (for the engine tests) is defined after this file.
cmake_language(DEFER CALL target_link_libraries brindle_static INTERFACE ${BRINDLE_SYSTEM_LIBS})

# GoogleTest from the sources Debian ships, built with the cross compiler.
if(BRINDLE_TESTS AND NOT TARGET GTest::gtest_main)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
    set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
    set(BRINDLE_GTEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest sources for the cross build")
    add_subdirectory(${BRINDLE_GTEST_SOURCE} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    if(NOT TARGET GTest::gtest_main) # newer GoogleTest defines the alias itself
        add_library(GTest::gtest_main ALIAS gtest_main)
    endif()
endif()

# The test programs reach the DLL by plain name at run time, as VB does
# (tools/gen_dll_client.py); tests/CMakeLists.txt calls this for brindle_tests.
set(BRINDLE_DLL_CLIENT ${BRINDLE_GENERATED}/dll_client.cpp)
add_custom_command(
    OUTPUT ${BRINDLE_DLL_CLIENT}
    COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/tools/gen_dll_client.py
            ${PROJECT_SOURCE_DIR}/exports ${BRINDLE_DLL_CLIENT}
    DEPENDS ${BRINDLE_EXPORT_LISTS} ${PROJECT_SOURCE_DIR}/tools/gen_dll_client.py
            ${PROJECT_SOURCE_DIR}/tools/gen_exports.py
    COMMENT "Generating the test programs' client of ${BRINDLE_DLL_NAME}.dll"
    VERBATIM)
add_custom_target(brindle_dll_client DEPENDS ${BRINDLE_DLL_CLIENT})

function(brindle_windows_client target)
    target_sources(${target} PRIVATE ${BRINDLE_DLL_CLIENT})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src ${BRINDLE_GENERATED})
    target_compile_definitions(${target} PRIVATE BRINDLE_DLL_FILE="$<TARGET_FILE_NAME:brindle>")
    # zlib too: tests use it as an oracle (on Linux it comes with the library).
    target_link_libraries(${target} PRIVATE ${BRINDLE_SYSTEM_LIBS} ZLIB::ZLIB)
    add_dependencies(${target} brindle brindle_generated brindle_dll_client)
endfunction()
