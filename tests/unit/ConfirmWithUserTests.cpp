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

TEST (ConfirmWithUser, AcceptsYAndNInEitherCaseAndAnEmptyLine)
{
    EXPECT_EQ (ask ("y\nY\n\nn\nN\n", 5), yes + yes + yes + no + no);
}

using OtherLines = testing::TestWithParam<std::string>;

TEST_P (OtherLines, MakeItAskAgainAndPrintNothingElse) { EXPECT_EQ (ask (GetParam() + "\nn\n"), again + no); }

INSTANTIATE_TEST_SUITE_P (ConfirmWithUser,
                          OtherLines,
                          testing::Values ("yes",
                                           "n ",
                                           "\t",
                                           "y\r", // the carriage return belongs to the line
                                           "n\r",
                                           "\r",
                                           "\xc3\xbf",         // y with diaeresis
                                           "\xef\xbc\xb9",     // fullwidth Y
                                           "\xf0\x90\x81\x99", // a character whose lower 16 bits are those of Y

                                           // Invalid UTF-8:
                                           "\x80", // a lone continuation byte; C with cedilla in a DOS code page
                                           "\x80 va bien, je pense", // longer than the rounding of any allocation
                                           "\xc1\xb9",               // y in two bytes
                                           "\xe0\x80\x80",           // NUL in three bytes
                                           "y\x80",                  // an answer, then a continuation byte
                                           "\xfb",                   // a truncated sequence
                                           "\xff",
                                           "\xed\xa0\x80")); // half of a surrogate pair

TEST (ConfirmWithUser, AsksAgainAfterALineWithANul)
{
    using namespace std::string_literals;

    for (const auto& line : { "\0"s, "\0\0\0"s, "\0y"s, "\0n"s, "y\0"s, "n\0"s, "y\0\x80"s })
        EXPECT_EQ (ask (line + "\nn\n"), again + no);
}

TEST (ConfirmWithUser, HonoursAnUnfinishedAnswerAtTheEndOfTheInputOnce)
{
    EXPECT_EQ (ask ("y", 2), yes + yes);
    EXPECT_EQ (ask ("n", 2), no + yes);
}

TEST (ConfirmWithUser, SaysYesAtTheEndOfTheInputAfterALineThatIsNoAnswer) { EXPECT_EQ (ask ("maybe\n"), again + yes); }

TEST (ConfirmWithUser, SaysYesWithoutReadingFromAnInputThatHasFailed)
{
    const RecordingLogger logger;
    const Console console ("n\n");
    std::cin.setstate (std::ios::failbit);

    EXPECT_TRUE (confirmWithUser());
    EXPECT_TRUE (std::cin.fail()) << "the state must not be cleared";

    std::cin.clear();
    EXPECT_FALSE (confirmWithUser());
    EXPECT_EQ (console.output(), "Y/n? Y/n? ");
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
