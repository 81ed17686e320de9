# Makes short import libraries, with which lld drops the imports of the code that it drops. Debian's mingw-w64 10
# has long ones: the program would load DLLs for functions that it no longer calls.

# Replaces the names in a list with the paths of short libraries with the same functions.
function (make_short_imports libraries)
    set (folder "${CMAKE_CURRENT_BINARY_DIR}/imports")

    foreach (name IN LISTS ${libraries})
        set (long_library "${CMAKE_SYSROOT}/lib/lib${name}.a")
        set (short_library "${folder}/lib${name}.a")

        execute_process (COMMAND ${CMAKE_CXX_COMPILER_TARGET}-dlltool --identify "${long_library}"
            OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        execute_process (COMMAND ${CMAKE_CXX_COMPILER_TARGET}-nm --defined-only "${long_library}"
            OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)

        # The few functions that a long library defines itself are left out.
        string (REGEX MATCHALL " I __imp_[^\n]+" functions "${symbols}")
        list (TRANSFORM functions REPLACE " I __imp_" "")
        list (JOIN functions "\n" functions)
        set (definition "${folder}/${name}.def")
        file (CONFIGURE OUTPUT "${definition}" CONTENT "LIBRARY ${dll}\nEXPORTS\n${functions}\n" @ONLY)

        if ("${definition}" IS_NEWER_THAN "${short_library}")
            execute_process (COMMAND llvm-dlltool -m i386:x86-64 -d "${definition}" -l "${short_library}"
                COMMAND_ERROR_IS_FATAL ANY)
        endif()

        list (APPEND short_libraries "${short_library}")
    endforeach()

    set (${libraries} ${short_libraries} PARENT_SCOPE)
endfunction()
