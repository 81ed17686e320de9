#include "uninstall/FindUninstaller.h"

#include "RecordingLogger.h"
#include "SampleRegistry.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;
using namespace std::string_view_literals;

TEST (FindUninstaller, GivesTheCommandOfTheProductWhoseNameContainsTheFragment)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Something else"), terminated (u"C:\\else\\uninstall.exe") });
    registry.add ({ "Sample 2", terminated (u"The Orvex Studio of today"), terminated (u"C:\\studio\\uninstall.exe") });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Orvex Studio", path));
    EXPECT_EQ (path, "C:\\studio\\uninstall.exe");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (FindUninstaller, FindsAFragmentAtTheBeginningAtTheEndAndAsTheWholeName)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Alpha first"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", terminated (u"the last Beta"), terminated (u"C:\\2.exe") });
    registry.add ({ "Sample 3", terminated (u"Gamma"), terminated (u"C:\\3.exe") });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Alpha", path));
    EXPECT_EQ (path, "C:\\1.exe");
    EXPECT_TRUE (findUninstaller ("Beta", path));
    EXPECT_EQ (path, "C:\\2.exe");
    EXPECT_TRUE (findUninstaller ("Gamma", path));
    EXPECT_EQ (path, "C:\\3.exe");
}

TEST (FindUninstaller, TellsCapitalLettersFromSmallOnes)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"orvex studio"), terminated (u"C:\\uninstall.exe") });

    juce::String path;

    EXPECT_FALSE (findUninstaller ("Orvex Studio", path));
    EXPECT_TRUE (findUninstaller ("orvex studio", path));
}

TEST (FindUninstaller, LooksAtTheDisplayNameAndNotAtTheNameOfTheKey)
{
    SampleRegistry registry;
    registry.add ({ "Orvex Studio sample", terminated (u"Something else"), terminated (u"C:\\uninstall.exe") });

    juce::String path;

    EXPECT_FALSE (findUninstaller ("Orvex Studio", path));
}

TEST (FindUninstaller, OpensAnEntryOfTheLongestNameThatARegistryAllows)
{
    SampleRegistry registry;
    registry.add ({ juce::String::repeatedString ("n", 255), terminated (u"Orvex Studio"), terminated (u"C:\\n.exe") });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Orvex Studio", path));
    EXPECT_EQ (path, "C:\\n.exe");
}

TEST (FindUninstaller, TakesTheFirstOfSeveralMatches)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio 3"), terminated (u"C:\\3.exe") });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio 1"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 3", terminated (u"Orvex Studio 2"), terminated (u"C:\\2.exe") });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Orvex Studio", path));
    EXPECT_EQ (path, "C:\\3.exe");
}

TEST (FindUninstaller, PassesOverAnEntryWithoutADisplayNameInSilence)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Sample 1", {}, terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (u"C:\\2.exe") });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Orvex Studio", path));
    EXPECT_EQ (path, "C:\\2.exe");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (FindUninstaller, NeverMatchesAnEmptyDisplayNameByAFragment)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u""), terminated (u"C:\\1.exe") });

    juce::String path;

    EXPECT_FALSE (findUninstaller ("Orvex Studio", path));
}

TEST (FindUninstaller, TakesAMatchWithoutACommandAlthoughALaterOneHasACommand)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), {} });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (u"C:\\2.exe") });

    juce::String path ("left by the caller");

    EXPECT_TRUE (findUninstaller ("Orvex Studio", path));
    EXPECT_EQ (path, "");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (FindUninstaller, EmptiesThePathWhenNothingIsFound)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Something else"), terminated (u"C:\\1.exe") });

    juce::String path ("left by the caller");

    EXPECT_FALSE (findUninstaller ("Orvex Studio", path));
    EXPECT_EQ (path, "");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (FindUninstaller, DropsTheQuotesAroundAProgramAndKeepsItsArguments)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), terminated (u"\"C:\\a b\\uninstall.exe\" /log /ask") });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Orvex Studio", path));
    EXPECT_EQ (path, "C:\\a b\\uninstall.exe /log /ask");
}

TEST (FindUninstaller, DropsTheQuotesInsideOfACommand)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), terminated (u"run \"\"C:\\un\"install.exe\" 'a'\"") });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Orvex Studio", path));
    EXPECT_EQ (path, "run C:\\uninstall.exe 'a'");
}

TEST (FindUninstaller, KeepsTheQuotesInADisplayName)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"\"Orvex\" Studio"), terminated (u"C:\\1.exe") });

    juce::String path;

    EXPECT_FALSE (findUninstaller ("Orvex Studio", path));
    EXPECT_TRUE (findUninstaller ("\"Orvex\"", path));
}

TEST (FindUninstaller, ReadsLettersBeyondLatin)
{
    SampleRegistry registry;
    registry.add ({ juce::CharPointer_UTF8 ("Sample \u0416"),
                    terminated (u"\u0421\u0442\u0443\u0434\u0438\u044f \u97f3\u697d \U0001f3b9 Orvex"),
                    terminated (u"C:\\\u97f3\u697d\\\U0001f3b9.exe") });

    juce::String path;

    EXPECT_TRUE (findUninstaller (juce::CharPointer_UTF8 ("\u697d \U0001f3b9"), path));
    EXPECT_EQ (path.toStdString(), "C:\\\u97f3\u697d\\\U0001f3b9.exe");
}

TEST (FindUninstaller, ReadsADisplayNameOf2048BytesAndNoLongerOne)
{
    const std::u16string filling (1017, u'x');

    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (filling + u"Alpha"), terminated (u"C:\\2046.exe") });
    registry.add ({ "Sample 2", terminated (filling + u"x Beta"), terminated (u"C:\\2048.exe") });
    registry.add ({ "Sample 3", unterminated (filling + u"x Gamma"), terminated (u"C:\\2048 unterminated.exe") });
    registry.add ({ "Sample 4", terminated (u"Delta" + filling + u"xx"), terminated (u"C:\\2050.exe") });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Alpha", path));
    EXPECT_EQ (path, "C:\\2046.exe");
    EXPECT_TRUE (findUninstaller ("Beta", path));
    EXPECT_EQ (path, "C:\\2048.exe");
    EXPECT_TRUE (findUninstaller ("Gamma", path));
    EXPECT_EQ (path, "C:\\2048 unterminated.exe");
    EXPECT_FALSE (findUninstaller ("Delta", path));
}

TEST (FindUninstaller, ReadsACommandOf2048BytesAndNoLongerOne)
{
    const std::u16string command (1022, u'x');

    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Alpha"), terminated (command) });
    registry.add ({ "Sample 2", terminated (u"Beta"), terminated (command + u"y") });
    registry.add ({ "Sample 3", terminated (u"Gamma"), unterminated (command + u"yz") });
    registry.add ({ "Sample 4", terminated (u"Delta"), terminated (command + u"yz") });

    const auto expected = juce::String::repeatedString ("x", 1022);
    juce::String path;

    EXPECT_TRUE (findUninstaller ("Alpha", path));
    EXPECT_EQ (path, expected);
    EXPECT_TRUE (findUninstaller ("Beta", path));
    EXPECT_EQ (path, expected + "y");
    EXPECT_TRUE (findUninstaller ("Gamma", path));
    EXPECT_EQ (path, expected + "yz");
    EXPECT_TRUE (findUninstaller ("Delta", path));
    EXPECT_EQ (path, "");
}

TEST (FindUninstaller, ReadsTheRestOfTheNameBeforeBehindAnUnterminatedOne)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Something quite different"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", unterminated (u"Orvex"), terminated (u"C:\\2.exe") });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Orvexhing quite different", path));
    EXPECT_EQ (path, "C:\\2.exe");
}

TEST (FindUninstaller, ReadsTheRestOfAUnitBehindANameOfAnOddNumberOfBytes)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"ab\u0416cd"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", Bytes ("O\0r\0v", 5), terminated (u"C:\\2.exe") });
    registry.add ({ "Sample 3", Bytes ("X", 1), terminated (u"C:\\3.exe") });

    juce::String path;

    EXPECT_TRUE (findUninstaller (juce::CharPointer_UTF8 ("Or\u0476cd"), path));
    EXPECT_EQ (path, "C:\\2.exe");
    EXPECT_TRUE (findUninstaller (juce::CharPointer_UTF8 ("Xr\u0476cd"), path));
    EXPECT_EQ (path, "C:\\3.exe");
}

TEST (FindUninstaller, EndsATextAtItsFirstTerminator)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Alpha\0Beta"sv), terminated (u"C:\\1.exe\0 /ask"sv) });

    juce::String path;

    EXPECT_FALSE (findUninstaller ("Beta", path));
    EXPECT_TRUE (findUninstaller ("Alpha", path));
    EXPECT_EQ (path, "C:\\1.exe");
}

TEST (FindUninstaller, SurvivesATextThatEndsInsideOfASurrogatePair)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1",
                    unterminated (u"Orvex Studio" + std::u16string (1011, u'x') + u'\xd83c'),
                    unterminated (std::u16string (1023, u'y') + u'\xd83c') });

    juce::String path;

    EXPECT_TRUE (findUninstaller ("Orvex Studio", path));
    EXPECT_EQ (path.length(), 1024);
    EXPECT_EQ (path.substring (0, 1023), juce::String::repeatedString ("y", 1023));
}
