#include "DisposableMachine.h"
#include "PreClean.h"
#include "RecordingLogger.h"
#include "SampleKey_windows.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "products/OrvexStudioCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

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
