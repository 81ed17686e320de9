#include "products/UninstallStep.h"

#include "PreClean.h"
#include "RecordingLogger.h"
#include "SampleRegistry.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "products/OrvexStudioCleaner.h"
#include "products/ProductManagerCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

class Uninstall : public testing::Test
{
protected:
    RecordingLogger logger;
    TemporaryFolder folder;
    SampleRegistry registry;
};

using OrvexStudioUninstall = Uninstall;
using ProductManagerUninstall = Uninstall;

TEST_F (Uninstall, LogsAndChangesNothingWhenTheProductIsNotRegistered)
{
    for (const auto success : { true, false })
    {
        CleanResult result { success, 5, 7 };

        runUninstallStep ({ "Sample product", "/SILENT", "Sample" }, result);

        EXPECT_EQ (result, (CleanResult { success, 5, 7 }));
        EXPECT_EQ (logger.lines, Lines {});
    }
}

TEST_F (Uninstall, RunsTheUninstallerWithTheArgumentsAndLogsItsExitCode)
{
    StubUninstaller stub (folder, "uninstall");
    registry.add ({ "Sample", terminated (u"The Sample product 2"), terminated (stub.getPath().quoted()) });

    CleanResult result;
    runUninstallStep ({ "Sample product", "/quiet /x", "Sample" }, result);

    EXPECT_EQ (stub.getNotes(), Lines { stub.calledWith ("/quiet /x") });
    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 0" });
    EXPECT_EQ (result, CleanResult());
}

TEST_F (Uninstall, LeavesTheResultUnchangedAfterAnExitCodeOtherThanZero)
{
    StubUninstaller stub (folder, "uninstall", { "exit 3" });
    registry.add ({ "Sample", terminated (u"Sample product"), terminated (stub.getPath()) });

    for (const auto success : { true, false })
    {
        CleanResult result { success, 5, 7 };
        logger.lines.clear();

        runUninstallStep ({ "Sample product", "/SILENT", "Sample" }, result);

        EXPECT_EQ (result, (CleanResult { success, 5, 7 }));
        EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 3" });
    }
}

TEST_F (OrvexStudioUninstall, RunsItsTwoUninstallersOneAfterTheOther)
{
    StubUninstaller studio (folder, "studio", { "exit 2" });
    StubUninstaller version (folder, "version", { "exit 1" });
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), terminated (studio.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex version 4"), terminated (version.getPath()) });

    EXPECT_EQ (preClean<OrvexStudioCleaner>(), goesOn);

    EXPECT_EQ (studio.getNotes(), (Lines { studio.calledWith ("/SILENT"), "done" }));
    EXPECT_EQ (version.getNotes(), (Lines { version.calledWith ("/SILENT"), "done" }));
    EXPECT_EQ (logger.lines, (Lines { "Info: Uninstaller exit code: 1", "Info: Uninstaller exit code: 2" }));
}

TEST_F (OrvexStudioUninstall, RunsAnUninstallerTwiceIfItsNameHasBothFragments)
{
    StubUninstaller stub (folder, "uninstall");
    registry.add ({ "Sample 1", terminated (u"Orvex Studio, Orvex version 4"), terminated (stub.getPath()) });

    EXPECT_EQ (preClean<OrvexStudioCleaner>(), goesOn);

    EXPECT_EQ (stub.getNotes(), (Lines { stub.calledWith ("/SILENT"), stub.calledWith ("/SILENT") }));
    EXPECT_EQ (logger.lines, (Lines { "Info: Uninstaller exit code: 0", "Info: Uninstaller exit code: 0" }));
}

TEST_F (ProductManagerUninstall, RunsOnlyItsOwnUninstaller)
{
    StubUninstaller other (folder, "other");
    StubUninstaller manager (folder, "manager", { "exit 4" });
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), terminated (other.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex version 4"), terminated (other.getPath()) });
    registry.add ({ "Sample 3", terminated (u"Orvex Product Manager 2"), terminated (manager.getPath()) });

    EXPECT_EQ (preClean<ProductManagerCleaner>(), goesOn);

    EXPECT_EQ (other.getNotes(), Lines {});
    EXPECT_EQ (manager.getNotes(), (Lines { manager.calledWith ("/SILENT"), "done" }));
    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 4" });
}
