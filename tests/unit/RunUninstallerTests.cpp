#include "RunUninstallerFixture.h"

using namespace TessaraWorks;

TEST_F (RunUninstaller, ReturnsTheExitCodeOfAProgramThatEnded)
{
    for (const juce::uint32 code : { 0u, 3u, 255u })
    {
        StubUninstaller stub (folder, "uninstall", { "exit " + juce::String (code) });

        EXPECT_EQ (run (stub.getPath()), End (true, code));
        EXPECT_EQ (logger.lines, Lines {});
    }
}

TEST_F (RunUninstaller, QuotesThePathAndAppendsTheArgumentsUnchanged)
{
    StubUninstaller stub (folder.getChildFile ("a folder of blanks"), "the uninstaller");

    EXPECT_EQ (run (stub.getPath(), "/a \"b c\" \\d"), End (true, 0));
    EXPECT_EQ (stub.getNotes(), Lines { stub.calledWith ("/a \"b c\" \\d") });
}

TEST_F (RunUninstaller, AppendsNothingWithoutArguments)
{
    StubUninstaller stub (folder, "uninstall");

    EXPECT_EQ (run (stub.getPath(), ""), End (true, 0));
    EXPECT_EQ (stub.getNotes(), Lines { stub.getPath().quoted().toStdString() });
}

TEST_F (RunUninstaller, RunsTheProgramInTheCurrentDirectoryAndEnvironment)
{
    const auto file = folder.makeFile ("remove me");
    StubUninstaller stub (folder.getChildFile ("elsewhere"), "uninstall", { "remove remove me", "note-variable PATH" });

    const auto workingDirectory = juce::File::getCurrentWorkingDirectory();
    file.getParentDirectory().setAsCurrentWorkingDirectory();
    EXPECT_EQ (run (stub.getPath()), End (true, 0));
    workingDirectory.setAsCurrentWorkingDirectory();

    EXPECT_FALSE (file.exists());
    EXPECT_EQ (stub.getNotes(),
               (Lines { stub.calledWith ("/SILENT"),
                        ("PATH=" + juce::SystemStats::getEnvironmentVariable ("PATH", {})).toStdString(),
                        "done" }));
}

TEST_F (RunUninstaller, HidesTheOutputOfTheProgram)
{
    StubUninstaller stub (folder, "uninstall", { "print 1000", "print-error 1000" });

    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();

    EXPECT_EQ (run (stub.getPath()), End (true, 0));
    EXPECT_EQ (testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ (testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ (logger.lines, Lines {});
}
