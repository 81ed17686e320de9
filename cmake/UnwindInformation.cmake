# What an exception needs of Debian's libstdc++, to be passed on and caught with clang and lld.

# Types are compared by a function of the library, as GCC defines for this system by itself.
add_compile_definitions (__GXX_TYPEINFO_EQUALITY_INLINE=0)

# The library with its unwind information, for all that is linked.
set (library "${CMAKE_CURRENT_BINARY_DIR}/libstdc++.a")
execute_process (
    COMMAND "${CMAKE_CURRENT_LIST_DIR}/name-unwind-sections" "${gcc_dir}/libstdc++.a" "${library}.new"
    COMMAND_ERROR_IS_FATAL ANY)
file (COPY_FILE "${library}.new" "${library}" ONLY_IF_DIFFERENT)
link_libraries ("${library}")
