#include "uninstall/ReportManualUninstall.h"

#include "RecordingLogger.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (ReportManualUninstall, PrintsThePathUnchanged)
{
    RecordingLogger logger;
    TemporaryFolder folder;
    folder.makeFile ("un install.exe "); // Windows drops the last space, here and below
    const auto path = folder.getFullPathName() + "/./more/../un install.exe ";
    folder.makeFolder ("more");
    ASSERT_NE (juce::File (path).getFullPathName(), path);

    reportManualUninstall ("Orvex", path);

    EXPECT_EQ (logger.lines,
               (Lines { "Info: Existing Orvex software installation detected.",
                        "Info: Please first uninstall this software using Add/Remove Programs.",
                        "Info: You can also run the uninstaller directly: " + path.toStdString(),
                        "Info: You can re-run this cleaner after Orvex has been uninstalled to clean up any final "
                        "files." }));
}

TEST (ReportManualUninstall, DoesNotNameAnUninstallerThatIsNotAFile)
{
    TemporaryFolder folder;
    const auto file = folder.makeFile ("uninstall.exe");

    const juce::String paths[] = { "",
                                   folder.getChildFile ("missing.exe").getFullPathName(),
                                   folder.getFullPathName(),
                                   file.getFullPathName() + " /ask",
                                   file.getFullPathName().quoted() };

    for (const auto& path : paths)
    {
        RecordingLogger logger;

        reportManualUninstall ("Orvex Product Manager", path);

        EXPECT_EQ (logger.lines,
                   (Lines { "Info: Existing Orvex Product Manager software installation detected.",
                            "Info: Please first uninstall this software using Add/Remove Programs.",
                            "Info: You can re-run this cleaner after Orvex Product Manager has been uninstalled to "
                            "clean up any final files." }))
            << path;
    }
}
