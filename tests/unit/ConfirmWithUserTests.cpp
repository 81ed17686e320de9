#include "Console.h"
#include "RecordingLogger.h"
#include "cleaning/ConfirmWithUser.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

/** Types the input, asks the given number of times, and returns what was shown, logged and answered. */
static std::string ask (const std::string& input, int times = 1)
{
    const Console console (input);
    RecordingLogger logger;
    std::string dialogue;
    size_t shownBefore = 0;

    for (int i = 0; i < times; ++i)
    {
        logger.lines.clear();
        const auto answer = confirmWithUser();

        dialogue += console.output().substr (shownBefore);
        shownBefore = console.output().size();

        for (const auto& line : logger.lines)
            dialogue += "[" + line + "] ";

        dialogue += answer ? "yes " : "no ";
    }

    return dialogue + console.errors();
}

static const std::string yes = "Y/n? yes ";
static const std::string no = "Y/n? [Info: Cleaning cancelled by the user.] no ";
static const std::string again = "Y/n? ";

TEST (ConfirmWithUser, TakesYInEitherCaseAndAnEmptyLineForAYes)
{
    EXPECT_EQ (ask ("y\n"), yes);
    EXPECT_EQ (ask ("Y\n"), yes);
    EXPECT_EQ (ask ("\n"), yes);
}

TEST (ConfirmWithUser, TakesNInEitherCaseForANoAndLogsIt)
{
    EXPECT_EQ (ask ("n\n"), no);
    EXPECT_EQ (ask ("N\n"), no);
}

TEST (ConfirmWithUser, AsksAgainAndSaysNothingElseAfterAnyOtherLine)
{
    const std::string otherLines[] = {
        "yes",
        "no",
        "YES",
        "No",
        " y",
        "y ",
        " n",
        "n ",
        " ",
        "   ",
        "\t",
        "yy",
        "nn",
        "yn",
        "0",
        "1",
        "y.",
        "-y",
        "Y/n",
        "y\r", // the carriage return belongs to the line
        "n\r",
        "\r",
        "\xc3\xbf",     // y with diaeresis
        "\xc3\xb1",     // n with tilde
        "\xef\xbc\xb9", // fullwidth Y
        "\xd0\xbd",     // the Cyrillic letter that sounds like n
        "\xe3\x81\xaf\xe3\x81\x84",
        "\xf0\x9f\x91\x8d",
        "\xf0\x90\x81\x99", // a character whose lower 16 bits are those of Y

        // What is no proper UTF-8:
        "\x80",                   // a lone continuation byte; C with cedilla in a DOS code page
        "\x80y",                  // the same in front of more
        "\x80 va bien, je pense", // more than any memory is rounded up by
        "\xc1\xb9",               // y in two bytes
        "\xc1\xae",               // n in two bytes
        "\xe0\x80\x80",           // NUL in three bytes
        "y\x80",                  // an answer, and then one
        "\xfb",                   // a sequence that is cut short
        "\xff",
        "\xed\xa0\x80", // half of a surrogate pair
        std::string (100000, 'y'),
    };

    for (const auto& line : otherLines)
        EXPECT_EQ (ask (line + "\nn\n"), again + no) << line;
}

TEST (ConfirmWithUser, AsksUntilThereIsAnAnswer)
{
    EXPECT_EQ (ask ("what\nwhy\nyes\ny\n"), again + again + again + yes);
}

TEST (ConfirmWithUser, ReadsNoFurtherThanTheAnswer)
{
    const RecordingLogger logger;
    const Console console ("y\nn\nrest");

    EXPECT_TRUE (confirmWithUser());
    EXPECT_FALSE (confirmWithUser());

    std::string rest;
    std::getline (std::cin, rest);
    EXPECT_EQ (rest, "rest");
}

TEST (ConfirmWithUser, LooksAtNothingBehindTheFirstNulCharacterOfALine)
{
    EXPECT_EQ (ask (std::string ("n\0o\n", 4)), no);
    EXPECT_EQ (ask (std::string ("n\0\x80\n", 4)), no);
    EXPECT_EQ (ask (std::string ("\0n\n", 3)), yes);
}

TEST (ConfirmWithUser, SaysYesToEverythingOnceTheInputIsExhausted) { EXPECT_EQ (ask ("", 3), yes + yes + yes); }

TEST (ConfirmWithUser, HonoursAnUnfinishedAnswerAtTheEndOfTheInputOnce)
{
    EXPECT_EQ (ask ("y", 2), yes + yes);
    EXPECT_EQ (ask ("n", 2), no + yes);
}

TEST (ConfirmWithUser, SaysYesAtTheEndOfTheInputAfterAFinishedLineThatIsNoAnswer)
{
    EXPECT_EQ (ask ("maybe\n"), again + yes);
}

TEST (ConfirmWithUser, SaysYesWithoutReadingFromAnInputThatHasFailed)
{
    const RecordingLogger logger;
    const Console console ("n\n");
    std::cin.setstate (std::ios::failbit);

    EXPECT_TRUE (confirmWithUser());
    EXPECT_TRUE (std::cin.fail()) << "the state is not to be cleared";

    std::cin.clear();
    EXPECT_FALSE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? Y/n? ");
}

// A console that a test leaves, from inside of the program, after so many prompts.
class ImpatientConsole : public std::streambuf
{
public:
    struct PatienceLost
    {
    };

    int promptsLeft = 0;

private:
    std::streamsize xsputn (const char* text, std::streamsize length) override
    {
        if (std::string (text, static_cast<size_t> (length)) == "Y/n? " && --promptsLeft < 0)
            throw PatienceLost();

        return length;
    }
};

TEST (ConfirmWithUser, AsksWithoutEndAfterAnUnfinishedLineThatIsNoAnswer)
{
    const RecordingLogger logger;
    const Console console ("maybe");
    ImpatientConsole buffer;
    buffer.promptsLeft = 100000;
    std::cout.rdbuf (&buffer);
    std::cout.exceptions (std::ios::badbit); // lets the exception through

    EXPECT_THROW (confirmWithUser(), ImpatientConsole::PatienceLost);

    std::cout.exceptions (std::ios::goodbit);
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (ConfirmWithUser, ShowsEachPromptBeforeItReads)
{
    const RecordingLogger logger;
    Console console ("what\nn\n");
    Lines seen;
    console.onRead = [&] { seen.push_back (console.visibleOutput()); };

    EXPECT_FALSE (confirmWithUser());
    EXPECT_EQ (seen, (Lines { "Y/n? ", "Y/n? Y/n? " }));
}

TEST (ConfirmWithUser, WorksWithoutALogger)
{
    const RecordingLogger restoresTheLogger;
    const Console console ("n\n");
    getLogger() = nullptr;

    EXPECT_FALSE (confirmWithUser());
}
