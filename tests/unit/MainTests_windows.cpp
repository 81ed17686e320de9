#include "MainTests.h"

#include "ReplacedImport_windows.h"

using namespace TessaraWorks;

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
