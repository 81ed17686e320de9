#include "Console.h"
#include "DisposableMachine.h"
#include "LiveTexts.h"
#include "RecordingLogger.h"
#include "SampleRegistry.h"
#include "app/CleanAll.h"
#include "app/Commands.h"

using namespace TessaraWorks;

class CleanAll : public DisposableMachine
{
protected:
    void makeStudioWithThreeFolders()
    {
        makeFolder (programFiles.getChildFile ("Orvex"));
        makeFolder (programFiles.getChildFile ("Orvex Studio"));
        makeFolder (userData.getChildFile ("Orvex Monitor"));
    }

    void makeStudioWithTwoFiles()
    {
        makeFile (programFiles.getChildFile ("Common Files/VST3/Orvex.vst3"));
        makeFile (programFiles.getChildFile ("Common Files/VST3/OrvexMonitor.vst3"));
    }

    void makeContent() { makeFolder (sharedData.getChildFile ("TessaraWorks/Content")); }

    void makeMediaServerWithTwoFolders()
    {
        makeFolder (sharedData.getChildFile ("TessaraWorks/Applications/VelantoneMediaServer"));
        makeFolder (userData.getChildFile ("VelantonePlayer"));
    }

    void makeProductManagerWithFourFolders()
    {
        makeFolder (programFiles.getChildFile ("OrvexProductManager"));
        makeFolder (programFiles.getChildFile ("Orvex Product Manager"));
        makeFolder (userData.getChildFile ("OrvexProductManager"));
        makeFolder (userData.getChildFile ("Orvex Product Manager"));
    }
};

// The lines that tell which steps were offered, and which of them were carried out.
static Lines stepsIn (const Lines& lines)
{
    Lines steps;

    for (const auto& line : lines)
        if (line.rfind ("Info: Remove ", 0) == 0 || line.rfind ("Info: Cleaning: ", 0) == 0)
            steps.push_back (line);

    return steps;
}

TEST_F (CleanAll, OffersTheFiveProductsInOrderAndTakesFiveNoes)
{
    makeStudioWithThreeFolders();
    makeContent();
    const RecordingLogger logger;
    const Console console ("n\nn\nn\nn\nn\n");
    CleanResult total { true, 40, 50 };

    cleanAll (total);

    EXPECT_EQ (console.output(), "Y/n? Y/n? Y/n? Y/n? Y/n? ");
    EXPECT_EQ (logger.lines,
               (Lines { "Info: All installed Orvex & Velantone products will be cleaned.",
                        "Info: Remove Orvex Studio and all of its associated files?",
                        "Info: Cleaning cancelled by the user.",
                        "Info: Remove all Velantone content & playlist files?",
                        "Info: Cleaning cancelled by the user.",
                        "Info: Remove Velantone Media Server and all of its associated files?",
                        "Info: Cleaning cancelled by the user.",
                        "Info: Remove Orvex Product Manager and all of its associated files?",
                        "Info: Cleaning cancelled by the user.",
                        "Info: Remove all Tessara Works global directories and files?",
                        "Info: Cleaning cancelled by the user." }));
    EXPECT_TRUE (programFiles.getChildFile ("Orvex").exists());
    EXPECT_TRUE (sharedData.getChildFile ("TessaraWorks/Content").exists());
    EXPECT_TRUE (total.success);
    EXPECT_EQ (total.directoriesRemoved, 40);
    EXPECT_EQ (total.filesRemoved, 50);
}

TEST_F (CleanAll, AsksEachQuestionRightBeforeItsRun)
{
    const RecordingLogger logger;
    const Console console ("y\ny\ny\ny\ny\n");
    CleanResult total;

    cleanAll (total);

    EXPECT_EQ (stepsIn (logger.lines),
               (Lines { "Info: Remove Orvex Studio and all of its associated files?",
                        "Info: Cleaning: Orvex Studio",
                        "Info: Remove all Velantone content & playlist files?",
                        "Info: Cleaning: Velantone Content",
                        "Info: Remove Velantone Media Server and all of its associated files?",
                        "Info: Cleaning: Velantone Media Server",
                        "Info: Remove Orvex Product Manager and all of its associated files?",
                        "Info: Cleaning: Orvex Product Manager",
                        "Info: Remove all Tessara Works global directories and files?",
                        "Info: Cleaning: Tessara Works Global Directories" }));
    EXPECT_TRUE (total.success);
}

TEST_F (CleanAll, CountsTheStudioTwiceAndTheContentNever)
{
    makeStudioWithThreeFolders();
    makeStudioWithTwoFiles();
    makeContent();
    const RecordingLogger logger;
    const Console console ("y\ny\nn\nn\nn\n");
    CleanResult total;

    cleanAll (total);

    EXPECT_FALSE (sharedData.getChildFile ("TessaraWorks/Content").exists());
    EXPECT_TRUE (total.success);
    EXPECT_EQ (total.directoriesRemoved, 6);
    EXPECT_EQ (total.filesRemoved, 4);
}

TEST_F (CleanAll, CountsTheStudioTwiceAlsoWhenTheContentIsDeclined)
{
    makeStudioWithThreeFolders();
    makeStudioWithTwoFiles();
    makeContent();
    const RecordingLogger logger;
    const Console console ("y\nn\nn\nn\nn\n");
    CleanResult total;

    cleanAll (total);

    EXPECT_TRUE (sharedData.getChildFile ("TessaraWorks/Content").exists());
    EXPECT_EQ (total.directoriesRemoved, 6);
    EXPECT_EQ (total.filesRemoved, 4);
}

TEST_F (CleanAll, CountsNothingWhenOnlyTheContentIsAccepted)
{
    makeStudioWithThreeFolders();
    makeContent();
    const RecordingLogger logger;
    const Console console ("n\ny\nn\nn\nn\n");
    CleanResult total;

    cleanAll (total);

    EXPECT_FALSE (sharedData.getChildFile ("TessaraWorks/Content").exists());
    EXPECT_TRUE (total.success);
    EXPECT_EQ (total.directoriesRemoved, 0);
    EXPECT_EQ (total.filesRemoved, 0);
}

TEST_F (CleanAll, FailsWithTheContentAlthoughItIsNotCounted)
{
    makeUndeletableFolder (sharedData.getChildFile ("TessaraWorks/Content"));
    const RecordingLogger logger;
    const Console console ("n\ny\nn\nn\nn\n");
    CleanResult total;

    cleanAll (total);

    EXPECT_FALSE (total.success);
    EXPECT_EQ (total.directoriesRemoved, 0);
    EXPECT_EQ (total.filesRemoved, 0);
}

TEST_F (CleanAll, CountsEachOfTheOtherProductsOnce)
{
    makeMediaServerWithTwoFolders();
    makeProductManagerWithFourFolders();
    makeFile (programFiles.getChildFile ("Common Files/VST3/TessaraWorks"));
    const RecordingLogger logger;

    {
        const Console console ("n\nn\ny\nn\nn\n");
        CleanResult total;
        cleanAll (total);
        EXPECT_EQ (total.directoriesRemoved, 2);
        EXPECT_EQ (total.filesRemoved, 0);
    }

    {
        const Console console ("n\nn\nn\ny\nn\n");
        CleanResult total;
        cleanAll (total);
        EXPECT_EQ (total.directoriesRemoved, 4);
        EXPECT_EQ (total.filesRemoved, 0);
    }

    {
        const Console console ("n\nn\nn\nn\ny\n"); // what is left of the maker's folder, and the file
        CleanResult total;
        cleanAll (total);
        EXPECT_EQ (total.directoriesRemoved, 1);
        EXPECT_EQ (total.filesRemoved, 1);
    }
}

TEST_F (CleanAll, AddsUpAllRuns)
{
    makeStudioWithThreeFolders();
    makeStudioWithTwoFiles();
    makeContent();
    makeMediaServerWithTwoFolders();
    makeProductManagerWithFourFolders();
    const RecordingLogger logger;
    const Console console ("y\ny\ny\ny\ny\n");
    CleanResult total { true, 100, 200 };

    cleanAll (total);

    EXPECT_TRUE (total.success);
    EXPECT_EQ (total.directoriesRemoved, 100 + 3 + 3 + 2 + 4 + 1);
    EXPECT_EQ (total.filesRemoved, 200 + 2 + 2);
}

TEST_F (CleanAll, CarriesOnAfterAFailureAndStaysFailed)
{
    makeUndeletableFolder (programFiles.getChildFile ("Orvex"));
    makeContent();
    const RecordingLogger logger;
    const Console console ("y\ny\ny\ny\ny\n");
    CleanResult total;

    cleanAll (total);

    EXPECT_EQ (stepsIn (logger.lines),
               (Lines { "Info: Remove Orvex Studio and all of its associated files?",
                        "Info: Cleaning: Orvex Studio",
                        "Info: Remove all Velantone content & playlist files?",
                        "Info: Cleaning: Velantone Content",
                        "Info: Remove Velantone Media Server and all of its associated files?",
                        "Info: Cleaning: Velantone Media Server",
                        "Info: Remove Orvex Product Manager and all of its associated files?",
                        "Info: Cleaning: Orvex Product Manager",
                        "Info: Remove all Tessara Works global directories and files?",
                        "Info: Cleaning: Tessara Works Global Directories" }));
    EXPECT_FALSE (sharedData.getChildFile ("TessaraWorks").exists());
    EXPECT_FALSE (total.success);
    EXPECT_EQ (total.directoriesRemoved, 1);
}

TEST_F (CleanAll, FailsWithAnyOneOfItsSteps)
{
    struct Row
    {
        juce::File undeletable;
        std::string input;
    };

    const Row rows[] = {
        { userData.getChildFile ("VelantoneEQ"), "y\nn\nn\nn\nn\n" },
        { sharedData.getChildFile ("TessaraWorks/Content"), "n\ny\nn\nn\nn\n" },
        { userData.getChildFile ("VelantonePlayer"), "n\nn\ny\nn\nn\n" },
        { userData.getChildFile ("OrvexProductManager"), "n\nn\nn\ny\nn\n" },
        { sharedData.getChildFile ("TessaraWorks/Rest"), "n\nn\nn\nn\ny\n" },
    };

    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.undeletable.getFullPathName());
        makeUndeletableFolder (row.undeletable);
        const RecordingLogger logger;
        const Console console (row.input);
        CleanResult total;

        cleanAll (total);

        EXPECT_FALSE (total.success);
        EXPECT_EQ (total.directoriesRemoved, 0);

        deleteEvenIfProtected (row.undeletable);
    }
}

TEST_F (CleanAll, CountsWhatAFailedStepRemoved)
{
    makeStudioWithThreeFolders();
    makeUndeletableFolder (userData.getChildFile ("Orvex"));
    const RecordingLogger logger;
    const Console console ("y\nn\nn\nn\nn\n");
    CleanResult total;

    cleanAll (total);

    EXPECT_FALSE (total.success);
    EXPECT_EQ (total.directoriesRemoved, 6);
}

TEST_F (CleanAll, DoesNotTakeAnEarlierFailureBack)
{
    const RecordingLogger logger;
    const Console console ("n\ny\ny\nn\ny\n");
    CleanResult total { false, 0, 0 };

    cleanAll (total);

    EXPECT_FALSE (total.success);
}

TEST_F (CleanAll, TakesTheEndOfTheInputForFiveYeses)
{
    makeContent();
    const RecordingLogger logger;
    const Console console;
    CleanResult total;

    cleanAll (total);

    EXPECT_EQ (console.output(), "Y/n? Y/n? Y/n? Y/n? Y/n? ");
    EXPECT_FALSE (sharedData.getChildFile ("TessaraWorks").exists());
    EXPECT_TRUE (total.success);
}

TEST_F (CleanAll, HasOneCleanerAtATimeFromItsYesToTheEndOfItsRun)
{
    const SampleRegistry emptyRegistry;
    RecordingLogger logger;
    Console console ("y\ny\ny\ny\ny\n");
    CleanResult total;
    std::vector<int> textsAtQuestions, textsInRuns;

    logger.onLine = [&] (const std::string& line)
    {
        if (line.rfind ("Info: Cleaning: ", 0) == 0)
            textsInRuns.push_back (countLiveTexts());
    };
    console.onRead = [&] { textsAtQuestions.push_back (countLiveTexts()); };

    cleanAll (total);

    const auto none = textsAtQuestions.front();
    const auto inRun = none + 2; // the product's name and the line
    EXPECT_EQ (textsAtQuestions, (std::vector<int> { none, none, none, none, none }));
    EXPECT_EQ (textsInRuns, (std::vector<int> { inRun + 15, inRun + 1, inRun + 4, inRun + 8, inRun + 2 }));
}

TEST (CleanAllCommand, GivesItsOwnCommandLineTheNameOfTheExecutable)
{
    juce::ArgumentList args ("", juce::String());
    consoleApplication.addCommand ({ "--clean", {}, {}, {}, [&] (const juce::ArgumentList& given) { args = given; } });

    cleanAllCommand (juce::ArgumentList ("some name", juce::String ("some arguments")));
    consoleApplication = {};

    EXPECT_EQ (args.executableName,
               juce::File::getSpecialLocation (juce::File::currentExecutableFile).getFullPathName());
    ASSERT_EQ (args.size(), 1);
    EXPECT_EQ (args[0].text, "--clean=All");
}
