#include "PreClean.h"
#include "SampleRegistry.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "UninstallLines.h"
#include "products/OrvexStudioCleaner.h"
#include "uninstall/RunUninstaller.h"

#include <gtest/gtest.h>

#include <map>
#include <mutex>
#include <thread>
#include <vector>

using namespace TessaraWorks;

// Keeps apart what each thread logs.
class LoggerOfThreads : public RecordingLogger
{
public:
    void log (LogLevel level, juce::String message) override
    {
        const std::lock_guard<std::mutex> lock (mutex);
        RecordingLogger::log (level, message);
        linesOf[std::this_thread::get_id()].push_back (lines.back());
    }

    Lines getLinesOfThisThread()
    {
        const std::lock_guard<std::mutex> lock (mutex);
        return linesOf[std::this_thread::get_id()];
    }

private:
    std::mutex mutex;
    std::map<std::thread::id, Lines> linesOf;
};

struct Launch
{
    void run (LoggerOfThreads& logger)
    {
        const auto start = juce::Time::getMillisecondCounter();
        finished = runUninstaller (stub.getPath(), exitCode, "/SILENT");
        milliseconds = juce::Time::getMillisecondCounter() - start;
        lines = logger.getLinesOfThisThread();
    }

    const StubUninstaller& stub;
    bool finished = true;
    juce::uint32 exitCode = 99;
    juce::uint32 milliseconds = 0;
    Lines lines = {};
};

// One test for all that outlasts the limit, so that it is waited for once.
TEST (UninstallerTimeLimit, Is20SecondsAndThenTheProgramGoesOnByItselfAndTheCleanerWithItsNextOne)
{
    const auto onWindows = (juce::SystemStats::getOperatingSystemType() & juce::SystemStats::Windows) != 0;
    const auto codeOfRunningProgram = onWindows ? 259 : 0;

    LoggerOfThreads logger;
    TemporaryFolder folder;
    StubUninstaller version (folder, "version", { "print 1000000" }); // far more than a pipe holds
    StubUninstaller studio (folder, "studio", { "exit 2" });
    StubUninstaller slow (folder, "slow", { "sleep 24000" });
    StubUninstaller complaining (folder, "complaining", { "print-error 1000000" });
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), terminated (version.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (studio.getPath()) });

    CleanResult result;
    Lines studioLines;
    Launch launches[] = { { slow }, { complaining } };

    // One behind the other: a program inherits the pipes that are open when it starts.
    std::vector<std::thread> threads;
    threads.emplace_back (
        [&]
        {
            result = preClean<OrvexStudioCleaner>();
            studioLines = logger.getLinesOfThisThread();
        });
    version.waitForNotes (1);

    for (auto& launch : launches)
    {
        threads.emplace_back ([&] { launch.run (logger); });
        launch.stub.waitForNotes (1);
    }

    for (auto& thread : threads)
        thread.join();

    for (const auto& launch : launches)
    {
        EXPECT_FALSE (launch.finished);
        EXPECT_EQ (launch.exitCode, static_cast<juce::uint32> (codeOfRunningProgram));
        EXPECT_GE (launch.milliseconds, 20000u);
        EXPECT_LT (launch.milliseconds, 23000u);
        EXPECT_EQ (launch.lines, Lines { "Warning: Cleaner failed to launch the uninstaller." });
    }

    EXPECT_EQ (studioLines,
               notUninstalled ("Orvex", codeOfRunningProgram, version.getPath())
                   + Lines { "Info: Uninstaller exit code: 2" });
    EXPECT_EQ (result, stops);
    EXPECT_EQ (studio.getNotes().size(), 2u);

    EXPECT_EQ (slow.getNotes(), Lines { slow.calledWith ("/SILENT") });

    for (const auto* stub : { &version, &slow, &complaining })
    {
        stub->waitForNotes (2);
        EXPECT_EQ (stub->getNotes(), (Lines { stub->calledWith ("/SILENT"), "done" }));
    }
}
