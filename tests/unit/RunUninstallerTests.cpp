#include "uninstall/RunUninstaller.h"

#include "RecordingLogger.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <mutex>
#include <optional>
#include <thread>

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
    StubUninstaller stub (folder, "uninstall", { "print 1000" });

    testing::internal::CaptureStdout();
    juce::uint32 exitCode = 99;

    EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
    EXPECT_EQ (testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ (logger.lines, Lines {});
}

/** For runs in two threads at once. */
class LockedLogger : public RecordingLogger
{
public:
    void log (LogLevel level, juce::String message) override
    {
        const std::lock_guard<std::mutex> lock (mutex);
        RecordingLogger::log (level, message);
    }

private:
    std::mutex mutex;
};

struct Launch
{
    explicit Launch (const StubUninstaller& stub)
    {
        const auto start = juce::Time::getMillisecondCounter();
        finished = runUninstaller (stub.getPath(), exitCode, "/SILENT");
        milliseconds = juce::Time::getMillisecondCounter() - start;
    }

    bool finished;
    juce::uint32 exitCode = 99;
    juce::uint32 milliseconds;
};

TEST (RunUninstaller, GivesUpAfter20SecondsAndLeavesTheProgramToItself)
{
    const auto onWindows = (juce::SystemStats::getOperatingSystemType() & juce::SystemStats::Windows) != 0;
    const juce::uint32 codeOfRunningProgram = onWindows ? 259 : 0;

    LockedLogger logger;
    TemporaryFolder folder;
    StubUninstaller slowStub (folder, "slow", { "sleep 24000" });
    StubUninstaller blockedStub (folder, "blocked", { "print 1000000" }); // far more than a pipe holds

    // One behind the other: a program inherits the pipes that are open when it starts.
    std::optional<Launch> slow;
    std::thread slowRun ([&] { slow.emplace (slowStub); });
    slowStub.waitForNotes (1);
    const Launch blocked (blockedStub);
    slowRun.join();

    EXPECT_EQ (slowStub.getNotes(), Lines { ("\"" + slowStub.getPath() + "\" /SILENT").toStdString() });

    for (const auto& run : { *slow, blocked })
    {
        EXPECT_FALSE (run.finished);
        EXPECT_EQ (run.exitCode, codeOfRunningProgram);
        EXPECT_GE (run.milliseconds, 20000u);
        EXPECT_LT (run.milliseconds, 23000u);
    }

    EXPECT_EQ (logger.lines,
               (Lines { "Warning: Cleaner failed to launch the uninstaller.",
                        "Warning: Cleaner failed to launch the uninstaller." }));

    for (const auto* stub : { &slowStub, &blockedStub })
    {
        stub->waitForNotes (2);
        EXPECT_EQ (stub->getNotes(), (Lines { ("\"" + stub->getPath() + "\" /SILENT").toStdString(), "done" }));
    }
}

TEST (RunUninstaller, WaitsForAProgramThatTakesItsTime)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall", { "sleep 1500", "exit 3" });

    const Launch run (stub);

    EXPECT_TRUE (run.finished);
    EXPECT_EQ (run.exitCode, 3u);
    EXPECT_GE (run.milliseconds, 1500u);
    EXPECT_EQ (stub.getNotes().back(), "done");
    EXPECT_EQ (logger.lines, Lines {});
}
