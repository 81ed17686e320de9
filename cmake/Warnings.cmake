# The target orvex_warnings: what our own code is held to.

add_library (orvex_warnings INTERFACE)

if (MSVC)
    target_compile_options (orvex_warnings INTERFACE $<$<COMPILE_LANGUAGE:C,CXX>:/W4> $<$<COMPILE_LANGUAGE:C,CXX>:/WX>)
else()
    target_compile_options (orvex_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endif()
