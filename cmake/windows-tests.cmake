# Checks of the built DLL itself, beside the test programs (which ctest runs
# under Wine through CMAKE_CROSSCOMPILING_EMULATOR). These run on the build
# machine, so they name the Python interpreter by path, not as a target that
# would get the emulator too.
set(BRINDLE_CHECK_EXPORTS
    ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/check_exports.py
    --objdump ${CMAKE_OBJDUMP} --list ${BRINDLE_GENERATED}/exports.txt)

# Exactly the listed names, undecorated; and only system DLLs imported.
add_test(NAME export_list
    COMMAND ${BRINDLE_CHECK_EXPORTS} --library $<TARGET_FILE:brindle> --system-imports)

# The stack size of every 32-bit definition (the N of name@N in the objects
# the DLL is made of) equals the list's.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    add_test(NAME stack_sizes
        COMMAND ${BRINDLE_CHECK_EXPORTS} --stack-sizes $<TARGET_FILE:brindle_static>)
endif()
