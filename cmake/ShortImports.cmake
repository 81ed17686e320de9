# Makes import libraries in the short form, with which lld drops the imports of code that it drops. mingw-w64 10 of
# Debian has the long form: the program would load DLLs for functions that it no longer contains.

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

        # The few functions that a long library has of its own are left out.
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
