#include "NoFreeFileHandles.h"
#include "RunUninstallerFixture.h"

using namespace TessaraWorks;

TEST_F (RunUninstaller, WarnsWhenTheStartFails)
{
    StubUninstaller stub (folder, "uninstall");

    {
        NoFreeFileHandles limit;
        EXPECT_EQ (run (stub.getPath()), End (false, 0));
    }

    EXPECT_EQ (logger.lines, Lines { "Warning: Cleaner failed to launch the uninstaller." });
    EXPECT_EQ (stub.getNotes(), Lines {});
}

// JUCE's start succeeds here as soon as there is a new process, whether or not it becomes the program.
TEST_F (RunUninstaller, TreatsAFileThatIsNoProgramAsOneThatExitedWith255)
{
    StubUninstaller stub (folder, "uninstall");

    for (const auto& path : { juce::String(),
                              stub.getPath() + " /ask",
                              folder.getFullPathName(),
                              folder.makeFile ("text.txt").getFullPathName() })
        EXPECT_EQ (run (path), End (true, 255)) << path;

    EXPECT_EQ (logger.lines, Lines {});
    EXPECT_EQ (stub.getNotes(), Lines {});
}
