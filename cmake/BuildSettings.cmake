set (CMAKE_CXX_STANDARD 17)
set (CMAKE_CXX_STANDARD_REQUIRED ON)
set (CMAKE_CXX_EXTENSIONS OFF)
set (CMAKE_C_STANDARD 11)

set (CMAKE_EXPORT_COMPILE_COMMANDS ON)
set (CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>") # the product is one file

if (MSVC)
    # The same language as with other compilers: the standard's rules, UTF-8 sources, no macros min and max,
    # and no warnings about standard functions such as getenv.
    add_compile_options ($<$<COMPILE_LANGUAGE:C,CXX>:/permissive-> $<$<COMPILE_LANGUAGE:C,CXX>:/utf-8>)
    add_compile_definitions (NOMINMAX _CRT_SECURE_NO_WARNINGS)
endif()

if (ORVEX_SANITIZE)
    set (sanitizers -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_compile_options (${sanitizers})
    add_link_options (${sanitizers})
endif()

if (ORVEX_MINGW_OF_DEBIAN)
    include (UnwindInformation)
endif()
