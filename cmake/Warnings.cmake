# The target orvex_warnings: what our own code is held to.

add_library (orvex_warnings INTERFACE)

if (MSVC)
    # Without C4702, of code that is never reached: it comes of generated code, and so of the inlined functions of
    # other people's headers too, although they are marked as such.
    target_compile_options (orvex_warnings INTERFACE "$<$<COMPILE_LANGUAGE:C,CXX>:/W4;/WX;/wd4702>")
else()
    target_compile_options (orvex_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endif()
