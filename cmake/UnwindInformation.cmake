# Lets exceptions pass through Debian's libstdc++ and be caught, with clang and lld.

# A function of the library compares types. GCC defines this for Windows on its own.
add_compile_definitions (__GXX_TYPEINFO_EQUALITY_INLINE=0)

# Every program links a copy of the library that keeps its unwind information.
set (library "${CMAKE_CURRENT_BINARY_DIR}/libstdc++.a")
execute_process (
    COMMAND "${CMAKE_CURRENT_LIST_DIR}/name-unwind-sections" "${gcc_dir}/libstdc++.a" "${library}.new"
    COMMAND_ERROR_IS_FATAL ANY)
file (COPY_FILE "${library}.new" "${library}" ONLY_IF_DIFFERENT)
link_libraries ("${library}")
