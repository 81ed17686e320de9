# Import libraries in the short form, which lets the linker leave out what only unused code calls. With
# the long form, which mingw-w64's have, a DLL is loaded for functions that the program no longer contains.

# Replaces the names in a list by the paths of short libraries with the same functions.
function (make_short_imports libraries)
    set (folder "${CMAKE_CURRENT_BINARY_DIR}/imports")

    foreach (name IN LISTS ${libraries})
        set (long_library "${CMAKE_SYSROOT}/lib/lib${name}.a")
        set (short_library "${folder}/lib${name}.a")

        execute_process (COMMAND ${CMAKE_CXX_COMPILER_TARGET}-dlltool --identify "${long_library}"
            OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        execute_process (COMMAND ${CMAKE_CXX_COMPILER_TARGET}-nm --defined-only "${long_library}"
            OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)

        string (REGEX MATCHALL " T [^\n]+" functions "${symbols}")
        list (TRANSFORM functions REPLACE " T " "")
        list (JOIN functions "\n" functions)
        file (WRITE "${folder}/${name}.def" "LIBRARY ${dll}\nEXPORTS\n${functions}\n")

        execute_process (COMMAND llvm-dlltool -m i386:x86-64 -d "${folder}/${name}.def" -l "${short_library}"
            COMMAND_ERROR_IS_FATAL ANY)
        list (APPEND short_libraries "${short_library}")
    endforeach()

    set (${libraries} ${short_libraries} PARENT_SCOPE)
endfunction()
