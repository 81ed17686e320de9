#include "NoFreeFileHandles.h"
#include "PreClean.h"
#include "RecordingRegistry.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "UninstallLines.h"
#include "products/OrvexStudioCleaner.h"
#include "products/ProductManagerCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

static const std::string root = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
static const std::string rootRefused = "Critical: Failed to open the Windows registry key: " + root;

class UninstallByTable : public testing::Test
{
protected:
    template <typename Cleaner>
    static CleanResult preCleanWithoutStarts()
    {
        const NoFreeFileHandles limit;
        return preClean<Cleaner>();
    }

    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub { folder, "uninstall" };
    RecordingRegistry registry;
};

TEST_F (UninstallByTable, AdvisesTwiceForTheStudioWhenBothStartsFail)
{
    registry.entries = { { "Version", terminated (u"Orvex version 4"), terminated (stub.getPath()) },
                         { "Studio", terminated (u"Orvex Studio"), terminated (stub.getPath() + " /ask") } };

    EXPECT_EQ (preCleanWithoutStarts<OrvexStudioCleaner>(), stops);

    EXPECT_EQ (logger.lines, notUninstalled ("Orvex", 0, stub.getPath()) + notUninstalled ("Orvex Studio", 0));
}

TEST_F (UninstallByTable, AdvisesForTheProductManagerWhenTheStartFails)
{
    registry.entries = { { "Manager", terminated (u"Orvex Product Manager"), {} } };

    EXPECT_EQ (preCleanWithoutStarts<ProductManagerCleaner>(), stops);

    EXPECT_EQ (logger.lines, notUninstalled ("Orvex Product Manager", 0));
}

TEST_F (UninstallByTable, ContinuesWithTheSecondLookupOfTheStudioWhenTheFirstIsRefused)
{
    registry.entries = { { "Both", terminated (u"Orvex Studio, Orvex version 4"), terminated (stub.getPath()) } };
    registry.refuses = [&] (const std::string&) { return registry.calls.size() == 1; };

    EXPECT_EQ (preClean<OrvexStudioCleaner>(), goesOn);

    EXPECT_EQ (stub.getNotes().size(), 1u);
    EXPECT_EQ (logger.lines, (Lines { rootRefused, "Info: Uninstaller exit code: 0" }));
}

TEST_F (UninstallByTable, FailsTheStudioAfterItsFirstStartEvenIfTheSecondLookupIsRefused)
{
    registry.entries = { { "Version", terminated (u"Orvex version 4"), {} } };
    registry.refuses = [&] (const std::string&) { return registry.calls.size() == 7; }; // the first lookup makes six

    EXPECT_EQ (preCleanWithoutStarts<OrvexStudioCleaner>(), stops);

    EXPECT_EQ (logger.lines, notUninstalled ("Orvex", 0) + Lines { rootRefused });
}
