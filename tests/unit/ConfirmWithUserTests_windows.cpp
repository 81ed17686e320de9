#include "Console.h"
#include "RecordingLogger.h"
#include "ReplacedImport_windows.h"
#include "cleaning/ConfirmWithUser.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

static Lines events;

static void WINAPI noteSleep (DWORD milliseconds) { events.push_back ("sleep " + std::to_string (milliseconds)); }

/** Asks the given number of times, and returns the reads, waits and answers in order. */
static Lines ask (const std::string& input, int times = 1)
{
    const RecordingLogger logger;
    const ReplacedImport<decltype (noteSleep)> sleep ("Sleep", noteSleep);
    Console console (input);
    console.onRead = [] { events.push_back ("read"); };
    events.clear();

    for (int i = 0; i < times; ++i)
        events.push_back (confirmWithUser() ? "yes" : "no");

    return events;
}

/** While it lives, the standard input appears to be a console. */
class ConsoleAtTheInput
{
public:
    /** Takes the number of checks for a console that succeed before the console disappears. */
    explicit ConsoleAtTheInput (int questions = 1000) { questionsLeft = questions; }

private:
    static BOOL WINAPI getMode (HANDLE input, DWORD*)
    {
        EXPECT_EQ (input, GetStdHandle (STD_INPUT_HANDLE));
        return questionsLeft-- > 0 ? TRUE : FALSE;
    }

    static inline int questionsLeft = 0;

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

TEST (ConfirmWithUserAtAConsole, SaysNoToThisAndAllLaterQuestionsWhenTheConsoleDisappears)
{
    const ConsoleAtTheInput console (1);

    EXPECT_EQ (ask ("", 3), (Lines { "read", "sleep 3000", "no", "no", "no" }));
}

TEST (ConfirmWithUserWithoutAConsole, DoesNotWaitAtTheEndOfTheInput)
{
    HANDLE pipe = nullptr, otherEnd = nullptr;
    ASSERT_TRUE (CreatePipe (&pipe, &otherEnd, nullptr, 0));
    const auto nul = CreateFileW (L"NUL", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE (nul, INVALID_HANDLE_VALUE);
    const auto input = GetStdHandle (STD_INPUT_HANDLE);

    for (const auto withoutConsole : { nul, pipe, HANDLE { nullptr } })
    {
        SetStdHandle (STD_INPUT_HANDLE, withoutConsole);
        EXPECT_EQ (ask ("", 2), (Lines { "read", "yes", "yes" }));
        SetStdHandle (STD_INPUT_HANDLE, input);
    }

    for (const auto handle : { nul, pipe, otherEnd })
        CloseHandle (handle);
}
