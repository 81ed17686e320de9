# Cross-compiles for 64-bit Windows with clang and lld, and the headers and libraries of Debian's mingw-w64.
# GCC with its own linker makes an executable of twice the size that cannot be restricted to DLLs from the
# system folder.

set (ORVEX_MINGW_OF_DEBIAN ON) # linked with lld: the build works around its defects

set (CMAKE_SYSTEM_NAME Windows)
set (CMAKE_SYSTEM_PROCESSOR x86_64)

set (triple x86_64-w64-mingw32)
set (CMAKE_SYSROOT /usr/${triple})

set (CMAKE_C_COMPILER clang)
set (CMAKE_CXX_COMPILER clang++)
set (CMAKE_C_COMPILER_TARGET ${triple})
set (CMAKE_CXX_COMPILER_TARGET ${triple})
set (CMAKE_RC_COMPILER ${triple}-windres)

# clang does not find the C++ library in Debian's folders on its own.
execute_process (
    COMMAND ${triple}-g++-posix -print-libgcc-file-name
    OUTPUT_VARIABLE libgcc
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
get_filename_component (gcc_dir "${libgcc}" DIRECTORY)

# Deliberate: no stack protector. Debian's libssp asks a crypto provider for its guard at each start, which
# loads more DLLs and takes longer than the start itself: under Wine, a hello-world takes 11 ms without it,
# and 24 to 37 ms with it. And no CET flag: a run that fails unwinds an exception, which has
# never been tried on a processor with shadow stacks.
set (CMAKE_CXX_FLAGS_INIT "-isystem ${gcc_dir}/include/c++ -isystem ${gcc_dir}/include/c++/${triple}")
set (CMAKE_C_FLAGS_RELEASE_INIT "-Os -ffunction-sections -fdata-sections")
set (CMAKE_CXX_FLAGS_RELEASE_INIT "-Os -ffunction-sections -fdata-sections")
set (CMAKE_C_FLAGS_RELEASE "${CMAKE_C_FLAGS_RELEASE_INIT}" CACHE STRING "")
set (CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE_INIT}" CACHE STRING "")
set (CMAKE_EXE_LINKER_FLAGS_INIT "-static -fuse-ld=lld -L${gcc_dir} -Wl,--gc-sections -Wl,--no-insert-timestamp")
set (CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT "-Wl,-S")
set (CMAKE_CXX_STANDARD_LIBRARIES "-lpthread" CACHE STRING "")

set (CMAKE_FIND_ROOT_PATH /usr/${triple})
set (CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set (CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set (CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set (CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
