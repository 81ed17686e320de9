#include "FastClock_windows.h"
#include "PreClean.h"
#include "SampleRegistry.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"
#include "UninstallLines.h"
#include "products/OrvexStudioCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (UninstallOnWindows, OfTheStudioAdvisesTwiceWhenBothUninstallersOutlastTheLimit)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller version (folder, "version", { "sleep 2000" });
    StubUninstaller studio (folder, "studio", { "sleep 2000" });
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex version 4"), terminated (version.getPath()) });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (studio.getPath()) });

    const FastClock clock;
    EXPECT_EQ (preClean<OrvexStudioCleaner>(), stops);

    EXPECT_EQ (logger.lines,
               notUninstalled ("Orvex", 259, version.getPath())
                   + notUninstalled ("Orvex Studio", 259, studio.getPath()));
}
