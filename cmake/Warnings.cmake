# The target orvex_warnings: the warnings for our own code. The presets turn them into errors.

add_library (orvex_warnings INTERFACE)

if (MSVC)
    # Without C4702 (unreachable code): the compiler detects it when it generates code, so it also warns about
    # inlined functions of system headers.
    target_compile_options (orvex_warnings INTERFACE "$<$<COMPILE_LANGUAGE:C,CXX>:/W4;/wd4702>")
else()
    target_compile_options (orvex_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
endif()
