#include "uninstall/RunUninstaller.h"

#include "RecordingLogger.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (RunUninstaller, PassesOnExitCodesOf32BitsEvenThatOfARunningProgram)
{
    for (const juce::uint32 code : { 259u, 4294967295u })
    {
        RecordingLogger logger;
        TemporaryFolder folder;
        StubUninstaller stub (folder, "uninstall", { "exit " + juce::String (code) });

        juce::uint32 exitCode = 99;

        EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
        EXPECT_EQ (exitCode, code);
        EXPECT_EQ (logger.lines, Lines {});
    }
}

TEST (RunUninstaller, WarnsWhenThereIsNoProgramToStart)
{
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");

    const juce::String paths[] = { "",
                                   folder.getChildFile ("missing.exe").getFullPathName(),
                                   stub.getPath() + " /ask",
                                   folder.getFullPathName(),
                                   folder.makeFile ("text.txt").getFullPathName(),
                                   folder.makeFile ("text.exe").getFullPathName() };

    for (const auto& path : paths)
        for (const auto* arguments : { "", "/SILENT" })
        {
            RecordingLogger logger;
            juce::uint32 exitCode = 99;

            EXPECT_FALSE (runUninstaller (path, exitCode, arguments)) << path;
            EXPECT_EQ (exitCode, 0u) << path;
            EXPECT_EQ (logger.lines, Lines { "Warning: Cleaner failed to launch the uninstaller." }) << path;
        }

    EXPECT_EQ (stub.getNotes(), Lines {});
}

TEST (RunUninstaller, StartsAProgramInAFolderOfLettersBeyondLatin)
{
    TemporaryFolder folder;
    StubUninstaller stub (folder.getChildFile (juce::CharPointer_UTF8 ("\u97f3\u697d")), "uninstall");

    juce::uint32 exitCode = 99;

    EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
    EXPECT_EQ (stub.getNotes(), Lines { ("\"" + stub.getPath() + "\" /SILENT").toStdString() });
}
