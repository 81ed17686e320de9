#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

// Shared by the fuzz targets.

/** Called by libFuzzer with each input. */
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size);

/** Ends the process, so that libFuzzer keeps the input, unless the program and the model agree. */
inline void expectEqual (const char* what, const std::string& actual, const std::string& expected)
{
    if (actual == expected)
        return;

    std::fprintf (stderr, "%s\n  program: %s\n  model:   %s\n", what, actual.c_str(), expected.c_str());
    std::abort();
}

/** Returns the parts between the separators. An empty string is one empty part. */
inline std::vector<std::string> split (const std::string& text, char separator)
{
    std::vector<std::string> parts (1);

    for (const auto c : text)
    {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }

    return parts;
}
