#include "FastClock_windows.h"
#include "PreClean.h"
#include "SampleRegistry.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "UninstallLines.h"
#include "products/OrvexStudioCleaner.h"
#include "products/ProductManagerCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

class UninstallOnWindows : public testing::Test
{
protected:
    RecordingLogger logger;
    TemporaryFolder folder;
    SampleRegistry registry;
};

TEST_F (UninstallOnWindows, LogsTheExitCodeWithoutASign)
{
    StubUninstaller stub (folder, "uninstall", { "exit 4294967295" });
    registry.add ({ "Sample", terminated (u"Orvex Product Manager"), terminated (stub.getPath()) });

    EXPECT_EQ (preClean<ProductManagerCleaner>(), goesOn);

    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 4294967295" });
}

TEST_F (UninstallOnWindows, OfTheStudioRunsTheSecondUninstallerAlthoughTheFirstDoesNotStart)
{
    const auto text = folder.makeFile ("text.exe").getFullPathName();
    StubUninstaller studio (folder, "studio");
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), terminated (text.quoted()) });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (studio.getPath()) });

    EXPECT_EQ (preClean<OrvexStudioCleaner>(), stops);

    EXPECT_EQ (studio.getNotes().size(), 1u);
    EXPECT_EQ (logger.lines, notUninstalled ("Orvex", 0, text) + Lines { "Info: Uninstaller exit code: 0" });
}

TEST_F (UninstallOnWindows, OfTheStudioAdvisesTwiceWhenNeitherEntryLeadsToAProgram)
{
    StubUninstaller stub (folder, "uninstall");
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), {} });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (stub.getPath().quoted() + " /ask") });

    EXPECT_EQ (preClean<OrvexStudioCleaner>(), stops);

    EXPECT_EQ (stub.getNotes(), Lines {});
    EXPECT_EQ (logger.lines, notUninstalled ("Orvex", 0) + notUninstalled ("Orvex Studio", 0));
}

TEST_F (UninstallOnWindows, OfTheStudioRunsAnUninstallerOnceThatRemovesItsEntry)
{
    StubUninstaller stub (folder, "uninstall", { "remove-key " + juce::String (uninstallRoot) + "\\Sample 1" });
    registry.add ({ "Sample 1", terminated (u"Orvex Studio, Orvex version 4"), terminated (stub.getPath()) });

    EXPECT_EQ (preClean<OrvexStudioCleaner>(), goesOn);

    EXPECT_EQ (stub.getNotes(), (Lines { stub.calledWith ("/SILENT"), "done" }));
    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 0" });
}

TEST_F (UninstallOnWindows, OfTheProductManagerAdvisesWhenTheEntryHasNoCommand)
{
    registry.add ({ "Sample", terminated (u"Orvex Product Manager"), {} });

    EXPECT_EQ (preClean<ProductManagerCleaner>(), stops);

    EXPECT_EQ (logger.lines, notUninstalled ("Orvex Product Manager", 0));
}

TEST_F (UninstallOnWindows, OfTheStudioAdvisesTwiceWhenBothUninstallersOutlastTheLimit)
{
    const FastClock clock;
    StubUninstaller version (folder, "version", { "sleep 2000" });
    StubUninstaller studio (folder, "studio", { "sleep 2000" });
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), terminated (version.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (studio.getPath()) });

    EXPECT_EQ (preClean<OrvexStudioCleaner>(), stops);

    EXPECT_EQ (logger.lines,
               notUninstalled ("Orvex", 259, version.getPath())
                   + notUninstalled ("Orvex Studio", 259, studio.getPath()));
}
