#include "uninstall/RunUninstaller.h"

#include "RecordingLogger.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (RunUninstaller, PassesOnTheExitCodeOfAProgramThatEnded)
{
    for (const juce::uint32 code : { 0u, 3u, 255u })
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

TEST (RunUninstaller, PutsThePathInQuotesAndTheArgumentsBehindIt)
{
    TemporaryFolder folder;
    StubUninstaller stub (folder.getChildFile ("a folder of blanks"), "the uninstaller");

    juce::uint32 exitCode = 99;

    EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
    EXPECT_EQ (stub.getNotes(), Lines { ("\"" + stub.getPath() + "\" /SILENT").toStdString() });
}

TEST (RunUninstaller, PutsNothingBehindThePathWithoutArguments)
{
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");

    juce::uint32 exitCode = 99;

    EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, ""));
    EXPECT_EQ (stub.getNotes(), Lines { ("\"" + stub.getPath() + "\"").toStdString() });
}

TEST (RunUninstaller, NeitherQuotesNorEscapesTheArguments)
{
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");

    juce::uint32 exitCode = 99;

    EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/a \"b c\" \\d"));
    EXPECT_EQ (stub.getNotes(), Lines { ("\"" + stub.getPath() + "\" /a \"b c\" \\d").toStdString() });
}

TEST (RunUninstaller, RunsTheProgramInTheOwnWorkingDirectoryAndEnvironment)
{
    TemporaryFolder folder;
    const auto file = folder.makeFile ("remove me");
    StubUninstaller stub (folder.getChildFile ("elsewhere"), "uninstall", { "remove remove me", "note-variable PATH" });

    const auto workingDirectory = juce::File::getCurrentWorkingDirectory();
    file.getParentDirectory().setAsCurrentWorkingDirectory();
    juce::uint32 exitCode = 99;
    EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
    workingDirectory.setAsCurrentWorkingDirectory();

    EXPECT_FALSE (file.exists());
    EXPECT_EQ (stub.getNotes(),
               (Lines { ("\"" + stub.getPath() + "\" /SILENT").toStdString(),
                        ("PATH=" + juce::SystemStats::getEnvironmentVariable ("PATH", {})).toStdString(),
                        "done" }));
}

TEST (RunUninstaller, ShowsNothingOfWhatTheProgramPrints)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall", { "print 1000", "print-error 1000" });

    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    juce::uint32 exitCode = 99;

    EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
    EXPECT_EQ (testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ (testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (RunUninstaller, WaitsForAProgramThatTakesItsTime)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall", { "sleep 1500", "exit 3" });

    const auto start = juce::Time::getMillisecondCounter();
    juce::uint32 exitCode = 99;

    EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
    EXPECT_GE (juce::Time::getMillisecondCounter() - start, 1500u);
    EXPECT_EQ (exitCode, 3u);
    EXPECT_EQ (stub.getNotes().back(), "done");
    EXPECT_EQ (logger.lines, Lines {});
}
