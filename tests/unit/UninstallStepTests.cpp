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

TEST (UninstallStep, SaysAndChangesNothingWhenTheProductIsNotRegistered)
{
    RecordingLogger logger;
    SampleRegistry registry;

    for (const auto success : { true, false })
    {
        CleanResult result;
        result.success = success;

        runUninstallStep ({ "Sample product", "/SILENT", "Sample" }, result);

        EXPECT_EQ (result.success, success);
        EXPECT_EQ (logger.lines, Lines {});
    }
}

TEST (UninstallStep, RunsTheUninstallerWithTheArgumentsAndLogsItsExitCode)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");
    SampleRegistry registry;
    registry.add ({ "Sample", terminated (u"The Sample product 2"), terminated (stub.getPath().quoted()) });

    CleanResult result;
    runUninstallStep ({ "Sample product", "/quiet /x", "Sample" }, result);

    EXPECT_EQ (stub.getNotes(), Lines { (stub.getPath().quoted() + " /quiet /x").toStdString() });
    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 0" });
    EXPECT_TRUE (result.success);
}

TEST (UninstallStep, DoesNotFailBecauseOfAnExitCode)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall", { "exit 3" });
    SampleRegistry registry;
    registry.add ({ "Sample", terminated (u"Sample product"), terminated (stub.getPath()) });

    CleanResult result;
    runUninstallStep ({ "Sample product", "/SILENT", "Sample" }, result);

    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 3" });
    EXPECT_TRUE (result.success);
}

TEST (UninstallStep, NeverMakesAFailureASuccess)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");
    SampleRegistry registry;
    registry.add ({ "Sample", terminated (u"Sample product"), terminated (stub.getPath()) });

    CleanResult result;
    result.success = false;
    runUninstallStep ({ "Sample product", "/SILENT", "Sample" }, result);

    EXPECT_EQ (stub.getNotes().size(), 1u);
    EXPECT_FALSE (result.success);
}

TEST (UninstallStep, LeavesTheCountersAlone)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");
    SampleRegistry registry;
    registry.add ({ "Sample", terminated (u"Sample product"), terminated (stub.getPath()) });

    CleanResult result;
    result.directoriesRemoved = 5;
    result.filesRemoved = 7;
    runUninstallStep ({ "Sample product", "/SILENT", "Sample" }, result);

    EXPECT_EQ (result.directoriesRemoved, 5);
    EXPECT_EQ (result.filesRemoved, 7);
}

TEST (OrvexStudioUninstall, RunsTheTwoUninstallersOneBehindTheOther)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller studio (folder, "studio", { "exit 2" });
    StubUninstaller version (folder, "version", { "exit 1" });
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), terminated (studio.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex version 4"), terminated (version.getPath()) });

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (studio.getNotes(), (Lines { (studio.getPath().quoted() + " /SILENT").toStdString(), "done" }));
    EXPECT_EQ (version.getNotes(), (Lines { (version.getPath().quoted() + " /SILENT").toStdString(), "done" }));
    EXPECT_EQ (logger.lines, (Lines { "Info: Uninstaller exit code: 1", "Info: Uninstaller exit code: 2" }));
    EXPECT_TRUE (result.success);
}

TEST (OrvexStudioUninstall, RunsTheSecondUninstallerAloneWhenTheFirstIsNotRegistered)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller studio (folder, "studio", { "exit 2" });
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), terminated (studio.getPath()) });

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (studio.getNotes(), (Lines { (studio.getPath().quoted() + " /SILENT").toStdString(), "done" }));
    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 2" });
    EXPECT_TRUE (result.success);
}

TEST (OrvexStudioUninstall, RunsAnUninstallerTwiceWhoseNameHasBothFragments)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio, Orvex version 4"), terminated (stub.getPath()) });

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (stub.getNotes(),
               (Lines { (stub.getPath().quoted() + " /SILENT").toStdString(),
                        (stub.getPath().quoted() + " /SILENT").toStdString() }));
    EXPECT_EQ (logger.lines, (Lines { "Info: Uninstaller exit code: 0", "Info: Uninstaller exit code: 0" }));
    EXPECT_TRUE (result.success);
}

TEST (OrvexStudioUninstall, SaysNothingWhenNothingIsRegistered)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Product Manager"), terminated (u"C:\\missing.exe") });

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (logger.lines, Lines {});
    EXPECT_TRUE (result.success);
}

TEST (ProductManagerUninstall, RunsTheOneUninstallerOfTheProduct)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller other (folder, "other");
    StubUninstaller manager (folder, "manager", { "exit 4" });
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), terminated (other.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex version 4"), terminated (other.getPath()) });
    registry.add ({ "Sample 3", terminated (u"Orvex Product Manager 2"), terminated (manager.getPath()) });

    CleanResult result;
    preClean<ProductManagerCleaner> (result);

    EXPECT_EQ (other.getNotes(), Lines {});
    EXPECT_EQ (manager.getNotes(), (Lines { (manager.getPath().quoted() + " /SILENT").toStdString(), "done" }));
    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 4" });
    EXPECT_TRUE (result.success);
}
