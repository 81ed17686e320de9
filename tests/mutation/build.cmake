# Settings for the builds of changed programs: no change is refused for a mere warning, and the sources that
# are compiled again and again compile quickly.

add_compile_options (-w)
add_link_options (-fuse-ld=lld)

if (WIN32)
    cmake_language (DEFER CALL target_precompile_headers orvex_cleaner PRIVATE <juce_core/juce_core.h>)
else()
    add_compile_options (-O0)
endif()
