#include "Console.h"
#include "RecordingLogger.h"
#include "ReplacedImport_windows.h"
#include "TemporaryFolder.h"
#include "cleaning/ConfirmWithUser.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

static Lines events;
static bool consoleIsThere = false;
static bool consoleGoesDuringTheRead = false;

static void WINAPI noteSleep (DWORD milliseconds) { events.push_back ("sleep " + std::to_string (milliseconds)); }

/** Asks the given number of times, and returns the reads, waits and answers in order. */
static Lines ask (const std::string& input, int times = 1)
{
    const RecordingLogger logger;
    const ReplacedImport<decltype (noteSleep)> sleep ("Sleep", noteSleep);
    Console console (input);
    console.onRead = []
    {
        events.push_back ("read");
        consoleIsThere = consoleIsThere && ! consoleGoesDuringTheRead;
    };
    events.clear();

    for (int i = 0; i < times; ++i)
        events.push_back (confirmWithUser() ? "yes" : "no");

    return events;
}

/** While it lives, the standard input appears to be a console. */
class ConsoleAtTheInput
{
public:
    explicit ConsoleAtTheInput (bool goesDuringTheRead = false)
    {
        consoleIsThere = true;
        consoleGoesDuringTheRead = goesDuringTheRead;
    }

private:
    static BOOL WINAPI getMode (HANDLE input, DWORD*)
    {
        EXPECT_EQ (input, GetStdHandle (STD_INPUT_HANDLE));
        return consoleIsThere ? TRUE : FALSE;
    }

    const ReplacedImport<decltype (getMode)> replacement { "GetConsoleMode", getMode };
};

TEST (ConfirmWithUserAtAConsole, WaitsForCtrlCBeforeTheEndOfTheInputCounts)
{
    const ConsoleAtTheInput console;

    EXPECT_EQ (ask (""), (Lines { "read", "sleep 3000", "yes" }));
    EXPECT_EQ (ask ("y"), (Lines { "read", "read", "sleep 3000", "yes" }));
    EXPECT_EQ (ask ("n"), (Lines { "read", "read", "sleep 3000", "no" }));
}

TEST (ConfirmWithUserAtAConsole, DoesNotWaitAfterAnAnswer)
{
    const ConsoleAtTheInput console;

    EXPECT_EQ (ask ("\ny\nmaybe\nn\n", 3), (Lines { "read", "yes", "read", "yes", "read", "read", "no" }));
}

TEST (ConfirmWithUserAtAConsole, SaysNoToThisAndAllLaterQuestionsWhenTheConsoleGoesDuringTheRead)
{
    for (const auto* unfinishedLine : { "", "y" })
    {
        const ConsoleAtTheInput console (true);
        auto expected = *unfinishedLine == 0 ? Lines { "read" } : Lines { "read", "read" };
        expected.insert (expected.end(), { "sleep 3000", "no", "no", "no" });

        EXPECT_EQ (ask (unfinishedLine, 3), expected) << unfinishedLine;
    }
}

TEST (ConfirmWithUserWithoutAConsole, DoesNotWaitAtTheEndOfTheInput)
{
    const auto open = [] (const juce::String& name)
    { return CreateFileW (name.toWideCharPointer(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr); };

    const TemporaryFolder folder;
    const auto file = open (folder.makeFile ("answers").getFullPathName());
    const auto nul = open ("NUL");
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    ASSERT_TRUE (CreatePipe (&readEnd, &writeEnd, nullptr, 0));
    ASSERT_TRUE (file != INVALID_HANDLE_VALUE && nul != INVALID_HANDLE_VALUE);
    const auto input = GetStdHandle (STD_INPUT_HANDLE);

    for (const auto withoutConsole : { nul, file, readEnd, HANDLE { nullptr } })
    {
        SetStdHandle (STD_INPUT_HANDLE, withoutConsole);
        EXPECT_EQ (ask ("", 2), (Lines { "read", "yes", "yes" }));
        SetStdHandle (STD_INPUT_HANDLE, input);
    }

    for (const auto handle : { nul, file, readEnd, writeEnd })
        CloseHandle (handle);
}
