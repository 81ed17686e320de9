#include "CleanResults.h"
#include "Console.h"
#include "DisposableMachine.h"
#include "LiveTexts.h"
#include "RecordingLogger.h"
#include "SampleRegistry.h"
#include "app/CleanAll.h"

using namespace TessaraWorks;

class CleanAll : public DisposableMachine
{
protected:
    /** Makes three folders and two files of the studio. */
    void makeStudio()
    {
        makeFolder (programFiles.getChildFile ("Orvex"));
        makeFolder (programFiles.getChildFile ("Orvex Studio"));
        makeFolder (userData.getChildFile ("Orvex Monitor"));
        makeFile (programFiles.getChildFile ("Common Files/VST3/Orvex.vst3"));
        makeFile (programFiles.getChildFile ("Common Files/VST3/TessaraWorks")); // of the company as well
    }

    /** Makes two folders of the media server and four of the product manager. */
    void makeOtherProducts()
    {
        makeFolder (sharedData.getChildFile ("TessaraWorks/Applications/VelantoneMediaServer"));
        makeFolder (userData.getChildFile ("VelantonePlayer"));
        makeFolder (programFiles.getChildFile ("OrvexProductManager"));
        makeFolder (programFiles.getChildFile ("Orvex Product Manager"));
        makeFolder (userData.getChildFile ("OrvexProductManager"));
        makeFolder (userData.getChildFile ("Orvex Product Manager"));
    }

    /** Offers all products, with an answer of one letter for each, and returns what the total has become. */
    CleanResult run (const std::string& answers, CleanResult total = {})
    {
        std::string input;

        for (const auto answer : answers)
            input += { answer, '\n' };

        const Console console (input);
        cleanAll (total);
        EXPECT_EQ (console.output(), "Y/n? Y/n? Y/n? Y/n? Y/n? ");
        return total;
    }

    const juce::File content = sharedData.getChildFile ("TessaraWorks/Content");
    RecordingLogger logger;
};

TEST_F (CleanAll, CountsTheStudioTwiceTheContentNeverAndTheOthersOnce)
{
    struct Row
    {
        std::string answers;
        int directories;
        int files;
        bool leavesContent;
    };

    const Row rows[] = {
        { "nnnnn", 0, 0, true },
        { "ynnnn", 3 + 3, 2 + 2, true },
        { "yynnn", 3 + 3, 2 + 2, false },
        { "nynnn", 0, 0, false },
        { "nnynn", 2, 0, true },
        { "nnnyn", 4, 0, true },
        { "nnnny", 1, 1, false }, // the content lies in the maker's folder
        { "yyyyy", 3 + 3 + 2 + 4 + 1, 2 + 2, false },
    };

    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.answers);
        makeStudio();
        makeFolder (content);
        makeOtherProducts();

        EXPECT_EQ (run (row.answers, { true, 100, 200 }),
                   (CleanResult { true, 100 + row.directories, 200 + row.files }));
        EXPECT_EQ (content.exists(), row.leavesContent);
    }
}

TEST_F (CleanAll, AsksEachQuestionRightBeforeItsRunAndCarriesOnAfterAFailure)
{
    makeUndeletableFolder (programFiles.getChildFile ("Orvex"));
    makeFolder (content);

    EXPECT_EQ (run ("yyyyy"), (CleanResult { false, 1, 0 }));

    Lines steps;

    for (const auto& line : logger.lines)
        if (line.rfind ("Info: Remove ", 0) == 0 || line.rfind ("Info: Cleaning: ", 0) == 0)
            steps.push_back (line);

    EXPECT_EQ (steps,
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
}

TEST_F (CleanAll, FailsWithAnyOneOfItsSteps)
{
    struct Row
    {
        juce::File undeletable;
        std::string answers;
    };

    const Row rows[] = {
        { userData.getChildFile ("VelantoneEQ"), "ynnnn" },
        { content, "nynnn" },
        { userData.getChildFile ("VelantonePlayer"), "nnynn" },
        { userData.getChildFile ("OrvexProductManager"), "nnnyn" },
        { sharedData.getChildFile ("TessaraWorks/Rest"), "nnnny" },
    };

    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.answers);
        makeUndeletableFolder (row.undeletable);

        EXPECT_EQ (run (row.answers), (CleanResult { false, 0, 0 }));

        deleteEvenIfProtected (row.undeletable);
    }
}

TEST_F (CleanAll, CountsWhatAFailedStepRemoved)
{
    makeStudio();
    makeUndeletableFolder (userData.getChildFile ("Orvex"));

    EXPECT_EQ (run ("ynnnn"), (CleanResult { false, 6, 4 }));
}

TEST_F (CleanAll, DoesNotTakeAnEarlierFailureBack)
{
    EXPECT_EQ (run ("nyyny", { false, 0, 0 }), (CleanResult { false, 0, 0 }));
}

TEST_F (CleanAll, HasOneCleanerAtATimeFromItsYesToTheEndOfItsRun)
{
    const SampleRegistry emptyRegistry;
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
