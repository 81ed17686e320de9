#include "products/UninstallStep.h"

#include "FastClock_windows.h"
#include "PreClean.h"
#include "RecordingLogger.h"
#include "SampleRegistry.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "products/OrvexStudioCleaner.h"
#include "products/ProductManagerCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (UninstallStep, LogsTheExitCodeWithoutASign)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall", { "exit 4294967295" });
    SampleRegistry registry;
    registry.add ({ "Sample", terminated (u"Sample product"), terminated (stub.getPath()) });

    CleanResult result;
    runUninstallStep ({ "Sample product", "/SILENT", "Sample" }, result);

    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 4294967295" });
    EXPECT_TRUE (result.success);
}

TEST (OrvexStudioUninstall, RunsTheSecondUninstallerAlthoughTheFirstDoesNotStart)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    const auto text = folder.makeFile ("text.exe").getFullPathName();
    StubUninstaller studio (folder, "studio");
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), terminated (text.quoted()) });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (studio.getPath()) });

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (studio.getNotes().size(), 1u);
    EXPECT_EQ (logger.lines,
               (Lines { "Warning: Cleaner failed to launch the uninstaller.",
                        "Info: Uninstaller exit code: 0",
                        "Info: Existing Orvex software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can also run the uninstaller directly: " + text.toStdString(),
                        "Info: You can re-run this cleaner after Orvex has been uninstalled to clean up any final "
                        "files.",
                        "Info: Uninstaller exit code: 0" }));
    EXPECT_FALSE (result.success);
}

TEST (OrvexStudioUninstall, AdvisesTwiceWhenNeitherEntryLeadsToAProgram)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), {} });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (stub.getPath().quoted() + " /ask") });

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (stub.getNotes(), Lines {});
    EXPECT_EQ (logger.lines,
               (Lines { "Warning: Cleaner failed to launch the uninstaller.",
                        "Info: Uninstaller exit code: 0",
                        "Info: Existing Orvex software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can re-run this cleaner after Orvex has been uninstalled to clean up any final "
                        "files.",
                        "Warning: Cleaner failed to launch the uninstaller.",
                        "Info: Uninstaller exit code: 0",
                        "Info: Existing Orvex Studio software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can re-run this cleaner after Orvex Studio has been uninstalled to clean up any "
                        "final files." }));
    EXPECT_FALSE (result.success);
}

TEST (OrvexStudioUninstall, RunsAnUninstallerOnceThatRemovesItsEntry)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall", { "remove-key " + juce::String (uninstallRoot) + "\\Sample 1" });
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio, Orvex version 4"), terminated (stub.getPath()) });

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (stub.getNotes(), (Lines { (stub.getPath().quoted() + " /SILENT").toStdString(), "done" }));
    EXPECT_EQ (logger.lines, Lines { "Info: Uninstaller exit code: 0" });
    EXPECT_TRUE (result.success);
}

TEST (ProductManagerUninstall, AdvisesWhenTheEntryHasNoCommand)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Sample", terminated (u"Orvex Product Manager"), {} });

    CleanResult result;
    preClean<ProductManagerCleaner> (result);

    EXPECT_EQ (logger.lines,
               (Lines { "Warning: Cleaner failed to launch the uninstaller.",
                        "Info: Uninstaller exit code: 0",
                        "Info: Existing Orvex Product Manager software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can re-run this cleaner after Orvex Product Manager has been uninstalled to clean "
                        "up any final files." }));
    EXPECT_FALSE (result.success);
}

TEST (OrvexStudioUninstall, AdvisesTwiceWhenBothUninstallersOutlastTheLimit)
{
    const FastClock clock;
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller version (folder, "version", { "sleep 2000" });
    StubUninstaller studio (folder, "studio", { "sleep 2000" });
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), terminated (version.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (studio.getPath()) });

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (logger.lines,
               (Lines { "Warning: Cleaner failed to launch the uninstaller.",
                        "Info: Uninstaller exit code: 259",
                        "Info: Existing Orvex software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can also run the uninstaller directly: " + version.getPath().toStdString(),
                        "Info: You can re-run this cleaner after Orvex has been uninstalled to clean up any final "
                        "files.",
                        "Warning: Cleaner failed to launch the uninstaller.",
                        "Info: Uninstaller exit code: 259",
                        "Info: Existing Orvex Studio software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can also run the uninstaller directly: " + studio.getPath().toStdString(),
                        "Info: You can re-run this cleaner after Orvex Studio has been uninstalled to clean up any "
                        "final files." }));
    EXPECT_FALSE (result.success);
}
