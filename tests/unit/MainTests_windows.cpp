#include "MainTests.h"

#include "ReplacedImport_windows.h"

using namespace TessaraWorks;

TEST_F (Main, EnablesCtrlCBeforeItDoesAnythingElse)
{
    static Lines events;
    events.clear();
    const Console console;
    logger.onLine = [] (const std::string& line) { events.push_back (line); };
    const ReplacedImport<decltype (SetConsoleCtrlHandler)> control (
        "SetConsoleCtrlHandler",
        [] (PHANDLER_ROUTINE handler, BOOL isAdded) -> BOOL
        {
            events.push_back (handler == nullptr && ! isAdded ? "Ctrl+C is not ignored" : "something else");
            return TRUE;
        });
    const ReplacedImport<decltype (OpenProcessToken)> refusal ("OpenProcessToken",
                                                               [] (HANDLE, DWORD, HANDLE*) -> BOOL
                                                               {
                                                                   events.push_back ("OpenProcessToken");
                                                                   return FALSE;
                                                               });

    run ("--version");

    ASSERT_GE (events.size(), 2u);
    EXPECT_EQ (events[0], "Ctrl+C is not ignored");
    EXPECT_EQ (events[1], "OpenProcessToken");
}

TEST_F (Main, ClosesTheLogFileAndThenClearsTheLoggerAfterARefusal)
{
    const Console console;
    const ReplacedImport<decltype (OpenProcessToken)> refusal ("OpenProcessToken",
                                                               [] (HANDLE, DWORD, HANDLE*) -> BOOL { return FALSE; });

    EXPECT_EQ (run ("--version"), 1);
    EXPECT_EQ (console.output(), "");
    EXPECT_EQ (
        logger.lines,
        (Lines { "Critical: This application must be run with Administrator privileges. Aborting...", "Closed" }));
    EXPECT_TRUE (wasInPlace);
    EXPECT_EQ (getLogger(), nullptr);
}
