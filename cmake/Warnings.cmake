# The target orvex_warnings: the warnings for our own code. The presets make errors of them.

add_library (orvex_warnings INTERFACE)

if (MSVC)
    # Without C4702 (unreachable code): the compiler finds it in generated code, and so in the inlined functions of
    # other people's headers too, although they are marked as such.
    target_compile_options (orvex_warnings INTERFACE "$<$<COMPILE_LANGUAGE:C,CXX>:/W4;/wd4702>")
else()
    target_compile_options (orvex_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
endif()
