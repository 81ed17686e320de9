#include "uninstall/FindUninstaller.h"

#include "FoundUninstaller.h"
#include "RecordingLogger.h"
#include "SampleRegistry.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;
using namespace std::string_view_literals;

TEST (FindUninstaller, ReturnsTheCommandOfTheEntryWhoseDisplayNameContainsTheFragment)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Alpha first"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", terminated (u"the last Beta"), terminated (u"C:\\2.exe") });
    registry.add ({ "Sample 3", terminated (u"Gamma"), terminated (u"C:\\3.exe") });
    registry.add ({ "Sample 4", terminated (u"The \"Orvex\" Studio of today"), terminated (u"C:\\4.exe") });

    EXPECT_EQ (findCommand ("Alpha"), "C:\\1.exe");
    EXPECT_EQ (findCommand ("Beta"), "C:\\2.exe");
    EXPECT_EQ (findCommand ("Gamma"), "C:\\3.exe");
    EXPECT_EQ (findCommand ("\"Orvex\" Studio"), "C:\\4.exe");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (FindUninstaller, SkipsOtherEntriesSilentlyAndEmptiesThePath)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Orvex Studio sample", terminated (u"Something else"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", terminated (u"orvex studio"), terminated (u"C:\\2.exe") });
    registry.add ({ "Sample 3", terminated (u"\"Orvex\" Studio"), terminated (u"C:\\3.exe") });
    registry.add ({ "Sample 4", terminated (u""), terminated (u"C:\\4.exe") });
    registry.add ({ "Sample 5", {}, terminated (u"C:\\5.exe") });

    EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt);
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (FindUninstaller, OpensAnEntryWithTheLongestPossibleName)
{
    SampleRegistry registry;
    registry.add ({ juce::String::repeatedString ("n", 255), terminated (u"Orvex Studio"), terminated (u"C:\\n.exe") });

    EXPECT_EQ (findCommand ("Orvex Studio"), "C:\\n.exe");
}

TEST (FindUninstaller, TakesTheFirstOfSeveralMatches)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio 3"), terminated (u"C:\\3.exe") });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio 1"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 3", terminated (u"Orvex Studio 2"), terminated (u"C:\\2.exe") });

    EXPECT_EQ (findCommand ("Orvex Studio"), "C:\\3.exe");
}

TEST (FindUninstaller, TakesAMatchWithoutACommandEvenIfALaterOneHasOne)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), {} });
    registry.add ({ "Sample 2", terminated (u"Orvex Studio"), terminated (u"C:\\2.exe") });

    EXPECT_EQ (findCommand ("Orvex Studio"), "");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (FindUninstaller, ComparesEachCharacterOfTheFragmentExactly)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Orvex Studio"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", terminated (u" Orvex  Studio\t"), terminated (u"C:\\2.exe") });

    for (const auto* fragment : { " Orvex", "Orvex  Studio", "Studio\t" })
        EXPECT_EQ (findCommand (fragment), "C:\\2.exe") << fragment;

    for (const auto* fragment : { "Orvex Studio ", "Orvex   Studio", "Studio \t", "Orvex*", "Orve?" })
        EXPECT_EQ (findCommand (fragment), std::nullopt) << fragment;
}

TEST (FindUninstaller, DropsAllQuotesFromACommandAndNothingElse)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Alpha"), terminated (u"\"C:\\a b\\uninstall.exe\" /log /ask") });
    registry.add ({ "Sample 2", terminated (u"Beta"), terminated (u"run \"\"C:\\un\"install.exe\" 'a'\"") });
    registry.add ({ "Sample 3", terminated (u"Gamma"), terminated (u" \t\" C:/A  b\\\\Un.exe \"\r\n ") });
    registry.add ({ "Sample 4", terminated (u"Delta"), terminated (u"\"\"") });

    EXPECT_EQ (findCommand ("Alpha"), "C:\\a b\\uninstall.exe /log /ask");
    EXPECT_EQ (findCommand ("Beta"), "run C:\\uninstall.exe 'a'");
    EXPECT_EQ (findCommand ("Gamma"), " \t C:/A  b\\\\Un.exe \r\n ");
    EXPECT_EQ (findCommand ("Delta"), "");
}

TEST (FindUninstaller, ReadsNonLatinCharacters)
{
    SampleRegistry registry;
    registry.add ({ juce::CharPointer_UTF8 ("Sample \u0416"),
                    terminated (u"\u0421\u0442\u0443\u0434\u0438\u044f \u97f3\u697d \U0001f3b9 Orvex"),
                    terminated (u"C:\\\u97f3\u697d\\\U0001f3b9.exe") });

    EXPECT_EQ (findCommand (juce::CharPointer_UTF8 ("\u697d \U0001f3b9")), "C:\\\u97f3\u697d\\\U0001f3b9.exe");
}

TEST (FindUninstaller, ReadsADisplayNameOfUpTo2048Bytes)
{
    const std::u16string filling (1017, u'x');

    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (filling + u"Alpha"), terminated (u"C:\\2046.exe") });
    registry.add ({ "Sample 2", terminated (filling + u"x Beta"), terminated (u"C:\\2048.exe") });
    registry.add ({ "Sample 3", unterminated (filling + u"x Gamma"), terminated (u"C:\\2048 unterminated.exe") });
    registry.add ({ "Sample 4", terminated (u"Delta" + filling + u"xx"), terminated (u"C:\\2050.exe") });

    EXPECT_EQ (findCommand ("Alpha"), "C:\\2046.exe");
    EXPECT_EQ (findCommand ("Beta"), "C:\\2048.exe");
    EXPECT_EQ (findCommand ("Gamma"), "C:\\2048 unterminated.exe");
    EXPECT_EQ (findCommand ("Delta"), std::nullopt);
}

TEST (FindUninstaller, ReadsACommandOfUpTo2048Bytes)
{
    const std::u16string command (1022, u'x');

    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Alpha"), terminated (command) });
    registry.add ({ "Sample 2", terminated (u"Beta"), terminated (command + u"y") });
    registry.add ({ "Sample 3", terminated (u"Gamma"), unterminated (command + u"yz") });
    registry.add ({ "Sample 4", terminated (u"Delta"), terminated (command + u"yz") });

    const std::string expected (1022, 'x');
    EXPECT_EQ (findCommand ("Alpha"), expected);
    EXPECT_EQ (findCommand ("Beta"), expected + "y");
    EXPECT_EQ (findCommand ("Gamma"), expected + "yz");
    EXPECT_EQ (findCommand ("Delta"), "");
}

TEST (FindUninstaller, ReadsTheRestOfThePreviousNameAfterAnUnterminatedOne)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Something quite different"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", unterminated (u"Orvex"), terminated (u"C:\\2.exe") });

    EXPECT_EQ (findCommand ("Orvexhing quite different"), "C:\\2.exe");
}

TEST (FindUninstaller, ReadsTheRestOfACodeUnitAfterANameWithAnOddNumberOfBytes)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"ab\u0416cd"), terminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", Bytes ("O\0r\0v", 5), terminated (u"C:\\2.exe") });
    registry.add ({ "Sample 3", Bytes ("X", 1), terminated (u"C:\\3.exe") });

    EXPECT_EQ (findCommand (juce::CharPointer_UTF8 ("Or\u0476cd")), "C:\\2.exe");
    EXPECT_EQ (findCommand (juce::CharPointer_UTF8 ("Xr\u0476cd")), "C:\\3.exe");
}

TEST (FindUninstaller, ReadsACommandThatIsUnterminatedOrEndsInsideACodeUnit)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Alpha"), unterminated (u"C:\\1.exe") });
    registry.add ({ "Sample 2", terminated (u"Beta"), Bytes ("C\0:\0\\", 5) });
    registry.add ({ "Sample 3", terminated (u"Gamma"), Bytes() });

    EXPECT_EQ (findCommand ("Alpha"), "C:\\1.exe");
    EXPECT_EQ (findCommand ("Beta"), "C:\\");
    EXPECT_EQ (findCommand ("Gamma"), "");
}

TEST (FindUninstaller, EndsAStringAtItsFirstTerminator)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1", terminated (u"Alpha\0Beta"sv), terminated (u"C:\\1.exe\0 /ask"sv) });

    EXPECT_EQ (findCommand ("Beta"), std::nullopt);
    EXPECT_EQ (findCommand ("Alpha"), "C:\\1.exe");
}

TEST (FindUninstaller, SurvivesAStringThatEndsInsideASurrogatePair)
{
    SampleRegistry registry;
    registry.add ({ "Sample 1",
                    unterminated (u"Orvex Studio" + std::u16string (1011, u'x') + u'\xd83c'),
                    unterminated (std::u16string (1023, u'y') + u'\xd83c') });

    const auto command = juce::String::fromUTF8 (findCommand ("Orvex Studio").value().c_str());
    EXPECT_EQ (command.length(), 1024);
    EXPECT_EQ (command.substring (0, 1023), juce::String::repeatedString ("y", 1023));
}
