# For scripts/mutate, which compiles the same few files again and again: reads the large headers once.

cmake_language (DEFER CALL target_precompile_headers orvex_cleaner PRIVATE <juce_core/juce_core.h>)
cmake_language (DEFER CALL target_precompile_headers OrvexCleaner PRIVATE <juce_core/juce_core.h>)
cmake_language (DEFER CALL target_precompile_headers UnitTests PRIVATE <juce_core/juce_core.h> <gtest/gtest.h>)
