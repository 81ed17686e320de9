#include "DisposableMachine.h"
#include "FastClock_windows.h"
#include "PreClean.h"
#include "SampleKey_windows.h"
#include "SampleRegistry.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "UninstallLines.h"
#include "products/OrvexStudioCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

class UninstallOnWindows : public testing::Test
{
protected:
    RecordingLogger logger;
    TemporaryFolder folder;
    SampleRegistry registry;
};

TEST_F (UninstallOnWindows, AdvisesTwiceForTheStudioWhenBothUninstallersOutlastTheLimit)
{
    StubUninstaller version (folder, "version", { "sleep 2000" });
    StubUninstaller studio (folder, "studio", { "sleep 2000" });
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), terminated (version.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (studio.getPath()) });

    const FastClock fastClock {};
    EXPECT_EQ (preClean<OrvexStudioCleaner>(), stops);

    EXPECT_EQ (logger.lines,
               notUninstalled ("Orvex", 259, version.getPath())
                   + notUninstalled ("Orvex Studio", 259, studio.getPath()));
}

// The uninstaller is a separate process, so it removes its entry from the machine's own list.
class UninstallOnThisMachine : public DisposableMachine
{
protected:
    RecordingLogger logger;
    TemporaryFolder folder;
};

TEST_F (UninstallOnThisMachine, RunsAnUninstallerOfTheStudioOnceIfItRemovesItsEntry)
{
    const auto path = juce::String (uninstallRoot) + "\\Sample 1";
    StubUninstaller stub (folder, "uninstall", { "remove-key " + path });
    const SampleKey entry (HKEY_LOCAL_MACHINE, path);
    entry.set (L"DisplayName", REG_SZ, terminated (u"Orvex Studio, Orvex version 4"));
    entry.set (L"UninstallString", REG_SZ, terminated (stub.getPath()));

    EXPECT_EQ (preClean<OrvexStudioCleaner>(), goesOn);

    EXPECT_EQ (stub.getNotes(), (Lines { stub.calledWith ("/SILENT"), "done" }));
    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 0" });
}
