#include "products/UninstallStep.h"

#include "NoFreeFileHandles.h"
#include "PreClean.h"
#include "RecordingLogger.h"
#include "RecordingRegistry.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "products/OrvexStudioCleaner.h"
#include "products/ProductManagerCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (OrvexStudioUninstall, AdvisesTwiceWhenBothStartsFail)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");
    RecordingRegistry registry;
    registry.entries = { { "Version", terminated (u"Orvex version 4"), terminated (stub.getPath()) },
                         { "Studio", terminated (u"Orvex Studio"), terminated (stub.getPath() + " /ask") } };

    CleanResult result;

    {
        NoFreeFileHandles limit;
        preClean<OrvexStudioCleaner> (result);
    }

    EXPECT_EQ (logger.lines,
               (Lines { "Warning: Cleaner failed to launch the uninstaller.",
                        "Info: Uninstaller exit code: 0",
                        "Info: Existing Orvex software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can also run the uninstaller directly: " + stub.getPath().toStdString(),
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

TEST (ProductManagerUninstall, AdvisesWhenTheStartFails)
{
    RecordingLogger logger;
    RecordingRegistry registry;
    registry.entries = { { "Manager", terminated (u"Orvex Product Manager"), {} } };

    CleanResult result;

    {
        NoFreeFileHandles limit;
        preClean<ProductManagerCleaner> (result);
    }

    EXPECT_EQ (logger.lines,
               (Lines { "Warning: Cleaner failed to launch the uninstaller.",
                        "Info: Uninstaller exit code: 0",
                        "Info: Existing Orvex Product Manager software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can re-run this cleaner after Orvex Product Manager has been uninstalled to clean "
                        "up any final files." }));
    EXPECT_FALSE (result.success);
}

TEST (OrvexStudioUninstall, GoesOnWithTheSecondLookupWhenTheFirstWasRefused)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");
    RecordingRegistry registry;
    registry.entries = { { "Both", terminated (u"Orvex Studio, Orvex version 4"), terminated (stub.getPath()) } };
    registry.refuses = [&] (const std::string&) { return registry.calls.size() == 1; };

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (stub.getNotes().size(), 1u);
    EXPECT_EQ (logger.lines,
               (Lines { "Critical: Failed to open the Windows registry key: "
                        "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
                        "Info: Uninstaller exit code: 0" }));
    EXPECT_TRUE (result.success);
}

TEST (OrvexStudioUninstall, CountsARefusedRegistryAsNothingRegistered)
{
    RecordingLogger logger;
    RecordingRegistry registry;
    registry.refuses = [] (const std::string&) { return true; };

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (logger.lines,
               (Lines { "Critical: Failed to open the Windows registry key: "
                        "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
                        "Critical: Failed to open the Windows registry key: "
                        "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall" }));
    EXPECT_TRUE (result.success);
}

TEST (OrvexStudioUninstall, FailsWithTheFirstStartAlthoughTheSecondLookupIsRefused)
{
    RecordingLogger logger;
    RecordingRegistry registry;
    registry.entries = { { "Version", terminated (u"Orvex version 4"), {} } };
    registry.refuses = [&] (const std::string&) { return registry.calls.size() == 7; }; // the six of the first lookup

    CleanResult result;

    {
        NoFreeFileHandles limit;
        preClean<OrvexStudioCleaner> (result);
    }

    EXPECT_EQ (logger.lines,
               (Lines { "Warning: Cleaner failed to launch the uninstaller.",
                        "Info: Uninstaller exit code: 0",
                        "Info: Existing Orvex software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can re-run this cleaner after Orvex has been uninstalled to clean up any final "
                        "files.",
                        "Critical: Failed to open the Windows registry key: "
                        "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall" }));
    EXPECT_FALSE (result.success);
}

TEST (ProductManagerUninstall, CountsARefusedRegistryAsNothingRegistered)
{
    RecordingLogger logger;
    RecordingRegistry registry;
    registry.refuses = [] (const std::string&) { return true; };

    CleanResult result;
    preClean<ProductManagerCleaner> (result);

    EXPECT_EQ (logger.lines,
               Lines { "Critical: Failed to open the Windows registry key: "
                       "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall" });
    EXPECT_TRUE (result.success);
}

TEST (OrvexStudioUninstall, LeavesOneKeyOpenForEachProductFound)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");
    RecordingRegistry registry;
    registry.entries = { { "Else", terminated (u"Something else"), {} },
                         { "Version", terminated (u"Orvex version 4"), terminated (stub.getPath()) },
                         { "Studio", terminated (u"Orvex Studio"), terminated (stub.getPath()) } };

    CleanResult result;
    preClean<OrvexStudioCleaner> (result);

    EXPECT_EQ (registry.getOpenKeys(),
               (Lines { "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Version",
                        "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Studio" }));
}
