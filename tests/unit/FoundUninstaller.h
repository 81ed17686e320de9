#pragma once

#include "uninstall/FindUninstaller.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

/** Looks for an uninstaller and returns its command, or nothing if none was found. */
inline std::optional<std::string> findCommand (const juce::String& fragment)
{
    juce::String path ("left by the caller");

    if (TessaraWorks::findUninstaller (fragment, path))
        return path.toStdString();

    EXPECT_EQ (path, "");
    return {};
}
