#include "FoundUninstaller.h"
#include "RecordingLogger.h"
#include "RecordingRegistry.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

static const std::string root = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
static const std::string openedRoot = "open " + root + " with 20019";

// A real registry neither shows the calls to it nor refuses any of them at will.

TEST (FindUninstallerCalls, OpensEachKeyByItsFullPathAndLeavesOnlyTheMatchingEntryOpen)
{
    RecordingRegistry registry;
    registry.entries = { { "{8F1}", {}, {} },
                         { "Else", terminated (u"Something else"), terminated (u"C:\\else.exe") },
                         { "Studio", terminated (u"Orvex Studio"), terminated (u"C:\\studio.exe") },
                         { "Behind", terminated (u"Orvex Studio"), terminated (u"C:\\behind.exe") } };

    EXPECT_EQ (findCommand ("Orvex Studio"), "C:\\studio.exe");

    EXPECT_EQ (registry.calls,
               (Lines { openedRoot,
                        "enumerate key 1 at 0 into 4096",
                        "open " + root + "\\{8F1} with 20019",
                        "query key 2 for DisplayName into 2048",
                        "close key 2",
                        "enumerate key 1 at 1 into 4096",
                        "open " + root + "\\Else with 20019",
                        "query key 3 for DisplayName into 2048",
                        "close key 3",
                        "enumerate key 1 at 2 into 4096",
                        "open " + root + "\\Studio with 20019",
                        "query key 4 for DisplayName into 2048",
                        "query key 4 for UninstallString into 2048",
                        "close key 1" }));
    EXPECT_EQ (registry.getOpenKeys(), Lines { root + "\\Studio" });
}

TEST (FindUninstallerCalls, AreRepeatedForEachSearch)
{
    RecordingRegistry registry;
    EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt);
    EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt);

    EXPECT_EQ (registry.calls,
               (Lines { openedRoot,
                        "enumerate key 1 at 0 into 4096",
                        "close key 1",
                        openedRoot,
                        "enumerate key 2 at 0 into 4096",
                        "close key 2" }));
}

TEST (FindUninstallerWhenRefused, LogsTheRootKeyAndClosesNothing)
{
    RecordingLogger logger;
    RecordingRegistry registry;
    registry.entries = { { "Studio", terminated (u"Orvex Studio"), terminated (u"C:\\studio.exe") } };
    registry.refuses = [] (const std::string& call) { return call.find ("open ") == 0; };

    EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt);
    EXPECT_EQ (logger.lines, Lines { "Critical: Failed to open the Windows registry key: " + root });
    EXPECT_EQ (registry.calls, Lines { openedRoot });
}

TEST (FindUninstallerWhenRefused, LogsTheFullPathOfAnEntryAndIgnoresAllEntriesAfterIt)
{
    RecordingLogger logger;
    RecordingRegistry registry;
    registry.entries = { { "Else", terminated (u"Something else"), terminated (u"C:\\else.exe") },
                         { "Locked", terminated (u"Something locked"), {} },
                         { "Studio", terminated (u"Orvex Studio"), terminated (u"C:\\studio.exe") } };
    registry.refuses = [] (const std::string& call) { return call.find ("\\Locked") != std::string::npos; };

    EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt);
    EXPECT_EQ (logger.lines, Lines { "Critical: Failed to open the Windows registry subkey: " + root + "\\Locked" });
    EXPECT_EQ (registry.calls,
               (Lines { openedRoot,
                        "enumerate key 1 at 0 into 4096",
                        "open " + root + "\\Else with 20019",
                        "query key 2 for DisplayName into 2048",
                        "close key 2",
                        "enumerate key 1 at 1 into 4096",
                        "open " + root + "\\Locked with 20019",
                        "close no key",
                        "close key 1" }));
}

TEST (FindUninstallerWhenRefused, EndsSilentlyOnAnyErrorOfTheEnumeration)
{
    for (const auto code : { 1, 5, 8, 234, 1018, -1 })
    {
        RecordingLogger logger;
        RecordingRegistry registry;
        registry.entries = { { "Else", terminated (u"Something else"), {} },
                             { "More", terminated (u"Something more"), {} },
                             { "Studio", terminated (u"Orvex Studio"), terminated (u"C:\\studio.exe") } };
        registry.refusalCode = code;
        registry.refuses = [] (const std::string& call) { return call == "enumerate key 1 at 1 into 4096"; };

        EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt) << code;
        EXPECT_EQ (logger.lines, Lines {});
        EXPECT_EQ (registry.calls.back(), "close key 1");
        EXPECT_EQ (registry.getOpenKeys(), Lines {});
    }
}

TEST (FindUninstallerWhenRefused, TreatsAnUnreadableCommandAsNoneAndLeavesItsEntryOpen)
{
    RecordingLogger logger;
    RecordingRegistry registry;
    registry.entries = { { "Studio", terminated (u"Orvex Studio"), terminated (u"C:\\studio.exe") } };
    registry.refuses = [] (const std::string& call) { return call == "query key 2 for UninstallString into 2048"; };

    EXPECT_EQ (findCommand ("Orvex Studio"), "");
    EXPECT_EQ (logger.lines, Lines {});
    EXPECT_EQ (registry.getOpenKeys(), Lines { root + "\\Studio" });
}

TEST (FindUninstallerCalls, FindNothingOnASystemWithoutARegistry)
{
    RecordingLogger logger;
    EXPECT_EQ (findCommand (""), std::nullopt);
    EXPECT_EQ (logger.lines, Lines {});
}
