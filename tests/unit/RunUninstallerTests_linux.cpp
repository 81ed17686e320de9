#include "uninstall/RunUninstaller.h"

#include "NoFreeFileHandles.h"
#include "RecordingLogger.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (RunUninstaller, WarnsWhenTheStartFails)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");

    juce::uint32 exitCode = 99;

    {
        NoFreeFileHandles limit;
        EXPECT_FALSE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
    }

    EXPECT_EQ (exitCode, 0u);
    EXPECT_EQ (logger.lines, Lines { "Warning: Cleaner failed to launch the uninstaller." });
    EXPECT_EQ (stub.getNotes(), Lines {});
}

// JUCE's start succeeds here as soon as there is a new process, whether or not it becomes the program.
TEST (RunUninstaller, TakesAProgramThatIsNoneForOneThatExitedWith255)
{
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");

    const juce::String paths[] = {
        "", stub.getPath() + " /ask", folder.getFullPathName(), folder.makeFile ("text.txt").getFullPathName()
    };

    for (const auto& path : paths)
    {
        RecordingLogger logger;
        juce::uint32 exitCode = 99;

        EXPECT_TRUE (runUninstaller (path, exitCode, "/SILENT")) << path;
        EXPECT_EQ (exitCode, 255u) << path;
        EXPECT_EQ (logger.lines, Lines {}) << path;
    }

    EXPECT_EQ (stub.getNotes(), Lines {});
}
