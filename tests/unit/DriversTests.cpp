#include "CleanResults.h"
#include "Console.h"
#include "DisposableMachine.h"
#include "LiveTexts.h"
#include "RecordingLogger.h"
#include "SampleRegistry.h"
#include "app/Drivers.h"

using namespace TessaraWorks;

class Drivers : public DisposableMachine
{
protected:
    /** Lets a driver offer its product, and returns what has become of a result that was not empty. */
    CleanResult run (void (*driver) (CleanResult&), const std::string& answer)
    {
        CleanResult result { false, 7, 8 };
        const Console console (answer);
        logger.lines.clear();
        driver (result);
        EXPECT_EQ (console.output(), "Y/n? ");
        return result;
    }

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

    RecordingLogger logger;
};

TEST_F (Drivers, LeaveProductAndResultAloneOnANo)
{
    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.productName);
        makeFolder (row.folder);

        EXPECT_EQ (run (row.driver, "n\n"), (CleanResult { false, 7, 8 }));

        EXPECT_TRUE (row.folder.exists());
        EXPECT_EQ (logger.lines, (Lines { row.question, "Info: Cleaning cancelled by the user." }));
    }
}

TEST_F (Drivers, CleanTheirProductAndReplaceTheWholeResultOnAYes)
{
    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.productName);
        makeFolder (row.folder);

        EXPECT_EQ (run (row.driver, "y\n"), (CleanResult { true, 1, 0 }));

        EXPECT_FALSE (row.folder.exists());
        EXPECT_EQ (logger.lines.at (0), row.question);
        EXPECT_EQ (logger.lines.at (1), "Info: Cleaning: " + row.productName);
        EXPECT_EQ (logger.lines.back(), "Info: " + row.productName + " was successfully removed.");
    }
}

TEST_F (Drivers, HaveTheirCleanerOnlyFromTheYesToTheEndOfTheRun)
{
    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.productName);
        const SampleRegistry emptyRegistry;
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
