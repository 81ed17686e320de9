#include "app/ShortOptions.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

static juce::String plain (const juce::String& commandLine)
{
    juce::StringArray texts;

    for (const auto& argument : withPlainShortOptions (juce::ArgumentList ("OrvexCleaner", commandLine)).arguments)
        texts.add (argument.text);

    return texts.joinIntoString (" ");
}

TEST (ShortOptions, AnArgumentThatContainsAnOptionsLetterBecomesThatOption)
{
    EXPECT_EQ (plain ("-h"), "-h");
    EXPECT_EQ (plain ("-xh"), "-h");
    EXPECT_EQ (plain ("-v"), "-v");
    EXPECT_EQ (plain ("-zv"), "-v");
}

TEST (ShortOptions, HelpWinsOverVersionInsideOfOneArgument) { EXPECT_EQ (plain ("-vh"), "-h"); }

TEST (ShortOptions, AnArgumentWithoutAnOptionsLetterAsksForNothing)
{
    EXPECT_EQ (plain ("-1"), "");
    EXPECT_EQ (plain ("-c"), "");
    EXPECT_EQ (plain ("-H"), "");
    EXPECT_EQ (plain ("-"), "");
}

TEST (ShortOptions, LongOptionsAndWordsStayAsTheyAre)
{
    EXPECT_EQ (plain ("--clean=Content -1 -xh heavy --version ---h"), "--clean=Content -h heavy --version ---h");
}

TEST (ShortOptions, TheExecutablesNameStays)
{
    EXPECT_EQ (withPlainShortOptions (juce::ArgumentList ("OrvexCleaner.exe", juce::String ("-xh"))).executableName,
               "OrvexCleaner.exe");
}

TEST (ShortOptions, JuceMatchesWhatIsReturned)
{
    const auto args = withPlainShortOptions (juce::ArgumentList ("OrvexCleaner", juce::String ("-1 -xh")));

    EXPECT_TRUE (args.containsOption ("--help|-h"));
    EXPECT_FALSE (args.containsOption ("--version|-v"));
}
