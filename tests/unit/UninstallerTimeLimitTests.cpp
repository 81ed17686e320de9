#include "PreClean.h"
#include "SampleRegistry.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "UninstallLines.h"
#include "products/OrvexStudioCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (UninstallerTimeLimit, Is20SecondsAfterWhichTheProgramRunsOnAndTheCleanerStartsTheNextOne)
{
    const auto onWindows = (juce::SystemStats::getOperatingSystemType() & juce::SystemStats::Windows) != 0;
    const auto codeOfRunningProgram = onWindows ? 259 : 0;

    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller version (folder, "version", { "print 40000", "print-error 40000" }); // more than one pipe holds
    StubUninstaller studio (folder, "studio", { "exit 2" });
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), terminated (version.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (studio.getPath()) });

    Lines notesOfVersion;
    juce::uint32 milliseconds = 0;
    const auto start = juce::Time::getMillisecondCounter();
    logger.onLine = [&] (const std::string& line)
    {
        if (line == "Warning: Cleaner failed to launch the uninstaller.")
        {
            milliseconds = juce::Time::getMillisecondCounter() - start;
            notesOfVersion = version.getNotes();
        }
    };

    EXPECT_EQ (preClean<OrvexStudioCleaner>(), stops);

    EXPECT_GE (milliseconds, 20000u);
    EXPECT_LT (milliseconds, 23000u);
    EXPECT_EQ (notesOfVersion, Lines { version.calledWith ("/SILENT") });
    EXPECT_EQ (logger.lines,
               notUninstalled ("Orvex", codeOfRunningProgram, version.getPath())
                   + Lines { "Info: Uninstaller exit code: 2" });
    EXPECT_EQ (studio.getNotes(), (Lines { studio.calledWith ("/SILENT"), "done" }));

    version.waitForNotes (2);
    EXPECT_EQ (version.getNotes(), (Lines { version.calledWith ("/SILENT"), "done" }));
}
