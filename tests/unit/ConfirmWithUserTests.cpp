#include "Console.h"
#include "RecordingLogger.h"
#include "cleaning/ConfirmWithUser.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (ConfirmWithUser, TakesYInEitherCaseForAYes)
{
    for (const auto* input : { "y\n", "Y\n" })
    {
        const RecordingLogger logger;
        const Console console (input);

        EXPECT_TRUE (confirmWithUser());
        EXPECT_EQ (console.output(), "Y/n? ");
        EXPECT_EQ (console.errors(), "");
        EXPECT_EQ (logger.lines, Lines {});
    }
}

TEST (ConfirmWithUser, TakesNInEitherCaseForANoAndLogsIt)
{
    for (const auto* input : { "n\n", "N\n" })
    {
        const RecordingLogger logger;
        const Console console (input);

        EXPECT_FALSE (confirmWithUser());
        EXPECT_EQ (console.output(), "Y/n? ");
        EXPECT_EQ (console.errors(), "");
        EXPECT_EQ (logger.lines, Lines { "Info: Cleaning cancelled by the user." });
    }
}

TEST (ConfirmWithUser, TakesAnEmptyLineForAYes)
{
    const RecordingLogger logger;
    const Console console ("\n");

    EXPECT_TRUE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? ");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (ConfirmWithUser, AsksAgainAndSaysNothingElseAfterAnyOtherLine)
{
    const char* const otherLines[] = {
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
    };

    for (const auto* line : otherLines)
    {
        SCOPED_TRACE (line);
        const RecordingLogger logger;
        const Console console (std::string (line) + "\nn\n");

        EXPECT_FALSE (confirmWithUser());
        EXPECT_EQ (console.output(), "Y/n? Y/n? ");
        EXPECT_EQ (console.errors(), "");
        EXPECT_EQ (logger.lines, Lines { "Info: Cleaning cancelled by the user." });
    }
}

TEST (ConfirmWithUser, AsksAgainAfterALineThatIsNoProperUtf8)
{
    const char* const otherLines[] = {
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
    };

    for (const auto* line : otherLines)
    {
        SCOPED_TRACE (line);
        const RecordingLogger logger;
        const Console console (std::string (line) + "\nn\n");

        EXPECT_FALSE (confirmWithUser());
        EXPECT_EQ (console.output(), "Y/n? Y/n? ");
        EXPECT_EQ (logger.lines, Lines { "Info: Cleaning cancelled by the user." });
    }
}

TEST (ConfirmWithUser, LooksAtNothingBehindTheFirstNulCharacter)
{
    const RecordingLogger logger;
    const Console console (std::string ("n\0\x80\n", 4));

    EXPECT_FALSE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? ");
}

TEST (ConfirmWithUser, AsksUntilThereIsAnAnswer)
{
    const RecordingLogger logger;
    const Console console ("what\nwhy\nyes\ny\n");

    EXPECT_TRUE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? Y/n? Y/n? Y/n? ");
    EXPECT_EQ (logger.lines, Lines {});
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

TEST (ConfirmWithUser, ReadsALineOfAnyLengthToItsEnd)
{
    const RecordingLogger logger;
    const Console console (std::string (100000, 'y') + "\n" + std::string (100000, '\n').insert (0, "n"));

    EXPECT_FALSE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? Y/n? ");
}

TEST (ConfirmWithUser, SeesALineOnlyUpToItsFirstNulCharacter)
{
    const RecordingLogger logger;
    const Console console (std::string ("n\0o\n", 4) + std::string ("\0n\n", 3));

    EXPECT_FALSE (confirmWithUser());
    EXPECT_TRUE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? Y/n? ");
}

TEST (ConfirmWithUser, SaysYesToEverythingOnceTheInputIsExhausted)
{
    const RecordingLogger logger;
    const Console console;

    EXPECT_TRUE (confirmWithUser());
    EXPECT_TRUE (confirmWithUser());
    EXPECT_TRUE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? Y/n? Y/n? ");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (ConfirmWithUser, HonoursAnUnfinishedYAtTheEndOfTheInput)
{
    const RecordingLogger logger;
    const Console console ("y");

    EXPECT_TRUE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? ");
}

TEST (ConfirmWithUser, HonoursAnUnfinishedNAtTheEndOfTheInputOnce)
{
    const RecordingLogger logger;
    const Console console ("n");

    EXPECT_FALSE (confirmWithUser());
    EXPECT_TRUE (confirmWithUser()) << "the next question has only the end of the input";
    EXPECT_EQ (console.output(), "Y/n? Y/n? ");
    EXPECT_EQ (logger.lines, Lines { "Info: Cleaning cancelled by the user." });
}

TEST (ConfirmWithUser, SaysYesAtTheEndOfTheInputAfterAFinishedLineThatIsNoAnswer)
{
    const RecordingLogger logger;
    const Console console ("maybe\n");

    EXPECT_TRUE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? Y/n? ");
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
