#pragma once

#include "RecordingLogger.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "uninstall/RunUninstaller.h"

#include <gtest/gtest.h>

#include <utility>

class RunUninstaller : public testing::Test
{
protected:
    /** Whether a program started and ended in time, and its exit code. */
    using End = std::pair<bool, juce::uint32>;

    static End run (const juce::String& path, const juce::String& arguments = "/SILENT")
    {
        juce::uint32 exitCode = 99;
        const auto finished = TessaraWorks::runUninstaller (path, exitCode, arguments);
        return { finished, exitCode };
    }

    RecordingLogger logger;
    TemporaryFolder folder;
};
