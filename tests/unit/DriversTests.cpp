#include "Console.h"
#include "DisposableMachine.h"
#include "LiveTexts.h"
#include "RecordingLogger.h"
#include "SampleRegistry.h"
#include "app/Drivers.h"

#include <algorithm>

using namespace TessaraWorks;

class Drivers : public DisposableMachine
{
protected:
    struct Row
    {
        void (*driver) (CleanResult&);
        std::string question;
        std::string productName;
        int paths;

        /** One of the folders that the product has. */
        juce::File folder;
    };

    const Row rows[5] = {
        { cleanOrvexStudio,
          "Info: Remove Orvex Studio and all of its associated files?",
          "Orvex Studio",
          15,
          programFiles.getChildFile ("Orvex") },
        { cleanProductManager,
          "Info: Remove Orvex Product Manager and all of its associated files?",
          "Orvex Product Manager",
          8,
          programFiles.getChildFile ("OrvexProductManager") },
        { cleanVelantoneMediaServer,
          "Info: Remove Velantone Media Server and all of its associated files?",
          "Velantone Media Server",
          4,
          sharedData.getChildFile ("TessaraWorks/Applications/VelantoneMediaServer") },
        { cleanContent,
          "Info: Remove all Velantone content & playlist files?",
          "Velantone Content",
          1,
          sharedData.getChildFile ("TessaraWorks/Content") },
        { cleanCompany,
          "Info: Remove all Tessara Works global directories and files?",
          "Tessara Works Global Directories",
          2,
          sharedData.getChildFile ("TessaraWorks") },
    };
};

TEST_F (Drivers, LeaveProductAndResultAloneOnANo)
{
    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.productName);
        makeFolder (row.folder);
        const RecordingLogger logger;
        const Console console ("n\n");
        CleanResult result { false, 7, 8 };

        row.driver (result);

        EXPECT_TRUE (row.folder.exists());
        EXPECT_FALSE (result.success);
        EXPECT_EQ (result.directoriesRemoved, 7);
        EXPECT_EQ (result.filesRemoved, 8);
        EXPECT_EQ (console.output(), "Y/n? ");
        EXPECT_EQ (logger.lines, (Lines { row.question, "Info: Cleaning cancelled by the user." }));
    }
}

TEST_F (Drivers, CleanTheirProductAndReplaceTheWholeResultOnAYes)
{
    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.productName);
        makeFolder (row.folder);
        const RecordingLogger logger;
        const Console console ("y\n");
        CleanResult result { false, 7, 8 };

        row.driver (result);

        EXPECT_FALSE (row.folder.exists());
        EXPECT_TRUE (result.success);
        EXPECT_EQ (result.directoriesRemoved, 1);
        EXPECT_EQ (result.filesRemoved, 0);
        EXPECT_EQ (console.output(), "Y/n? ");
        ASSERT_GE (logger.lines.size(), 2u);
        EXPECT_EQ (logger.lines[0], row.question);
        EXPECT_EQ (logger.lines[1], "Info: Cleaning: " + row.productName);
        EXPECT_EQ (logger.lines.back(), "Info: " + row.productName + " was successfully removed.");
    }
}

TEST_F (Drivers, HaveTheirCleanerOnlyFromTheYesToTheEndOfTheRun)
{
    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.productName);
        const SampleRegistry emptyRegistry;
        RecordingLogger logger;
        Console console ("y\n");
        CleanResult result;
        int textsAtQuestion = 0, textsInRun = 0;

        logger.onLine = [&] (const std::string& line)
        {
            if (line == "Info: Cleaning: " + row.productName)
                textsInRun = countLiveTexts();
        };
        console.onRead = [&] { textsAtQuestion = countLiveTexts(); };
        const auto textsBefore = countLiveTexts();

        row.driver (result);

        EXPECT_EQ (textsAtQuestion, textsBefore);
        EXPECT_EQ (textsInRun, textsBefore + row.paths + 2); // and the product's name and the line
        EXPECT_EQ (countLiveTexts(), textsBefore);
    }
}

TEST_F (Drivers, HandOnAFailure)
{
    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.productName);
        makeUndeletableFolder (row.folder);
        const RecordingLogger logger;
        const Console console ("y\n");
        CleanResult result { true, 7, 8 };

        row.driver (result);

        EXPECT_TRUE (row.folder.exists());
        EXPECT_FALSE (result.success);
        EXPECT_EQ (result.directoriesRemoved, 0);
        EXPECT_EQ (result.filesRemoved, 0);
        EXPECT_EQ (logger.lines.back(), "Info: " + row.productName + " encountered errors and could not be removed.");

        deleteEvenIfProtected (row.folder);
    }
}

TEST_F (Drivers, OfTheStudioTakesAPluginThatIsAFile)
{
    const auto plugin = makeFile (programFiles.getChildFile ("Common Files/VST3/Orvex.vst3"));
    const RecordingLogger logger;
    const Console console ("y\n");
    CleanResult result;

    cleanOrvexStudio (result);

    EXPECT_FALSE (plugin.exists());
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 1);
    EXPECT_EQ (std::count (logger.lines.begin(),
                           logger.lines.end(),
                           "Warning: Directory is actually a file, attempting to delete file..."),
               1);
}

TEST_F (Drivers, OfTheCompanyTakesAllThatTheOthersHaveInSharedData)
{
    makeFolder (sharedData.getChildFile ("TessaraWorks/Content"));
    makeFolder (sharedData.getChildFile ("TessaraWorks/Applications/VelantonePlayer"));
    makeFolder (sharedData.getChildFile ("TessaraWorks/Plugins/Orvex"));
    const RecordingLogger logger;
    const Console console ("y\n");
    CleanResult result;

    cleanCompany (result);

    EXPECT_FALSE (sharedData.getChildFile ("TessaraWorks").exists());
    EXPECT_TRUE (sharedData.exists());
    EXPECT_EQ (result.directoriesRemoved, 1);
    EXPECT_EQ (result.filesRemoved, 0);
}

TEST_F (Drivers, OfTheMediaServerLeavesTheFoldersAroundItsOwn)
{
    makeFolder (sharedData.getChildFile ("TessaraWorks/Applications/VelantonePlayer"));
    const RecordingLogger logger;
    const Console console ("y\n");
    CleanResult result;

    cleanVelantoneMediaServer (result);

    EXPECT_FALSE (sharedData.getChildFile ("TessaraWorks/Applications/VelantonePlayer").exists());
    EXPECT_TRUE (sharedData.getChildFile ("TessaraWorks/Applications").exists());
}
