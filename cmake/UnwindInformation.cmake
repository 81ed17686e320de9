# Debian's libstdc++ with its unwind information, for all that is linked: exceptions pass its functions.

set (library "${CMAKE_CURRENT_BINARY_DIR}/libstdc++.a")
execute_process (
    COMMAND "${CMAKE_CURRENT_LIST_DIR}/name-unwind-sections" "${gcc_dir}/libstdc++.a" "${library}.new"
    COMMAND_ERROR_IS_FATAL ANY)
file (COPY_FILE "${library}.new" "${library}" ONLY_IF_DIFFERENT)
link_libraries ("${library}")
