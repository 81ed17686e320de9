#include "../shared/Products.h"
#include "CleanResults.h"
#include "Console.h"
#include "DisposableMachine.h"
#include "LiveTexts.h"
#include "RecordingLogger.h"
#include "SampleRegistry.h"

using namespace TessaraWorks;
using namespace std::string_literals;

class Drivers : public DisposableMachine
{
protected:
    /** Lets a driver offer its product, and returns the result, which was not empty before. */
    CleanResult run (void (*driver) (CleanResult&), const std::string& answer)
    {
        CleanResult result { false, 7, 8 };
        const Console console (answer);
        logger.lines.clear();
        driver (result);
        EXPECT_EQ (console.output(), "Y/n? ");
        return result;
    }

    RecordingLogger logger;
};

TEST_F (Drivers, LeaveProductAndResultAloneAfterANo)
{
    forEachProduct (
        [&] (const auto& product)
        {
            SCOPED_TRACE (product.name);
            const auto folder = makeFolder (product.getPaths().getFirst());

            EXPECT_EQ (run (product.driver, "n\n"), (CleanResult { false, 7, 8 }));

            EXPECT_TRUE (folder.exists());
            EXPECT_EQ (logger.lines, (Lines { "Info: "s + product.question, "Info: Cleaning cancelled by the user." }));
        });
}

TEST_F (Drivers, CleanTheirProductAndReplaceTheWholeResultAfterAYes)
{
    forEachProduct (
        [&] (const auto& product)
        {
            SCOPED_TRACE (product.name);
            const auto folder = makeFolder (product.getPaths().getFirst());

            EXPECT_EQ (run (product.driver, "y\n"), (CleanResult { true, 1, 0 }));

            EXPECT_FALSE (folder.exists());
            EXPECT_EQ (logger.lines.at (0), "Info: "s + product.question);
            EXPECT_EQ (logger.lines.at (1), "Info: Cleaning: "s + product.name);
            EXPECT_EQ (logger.lines.back(), "Info: "s + product.name + " was successfully removed.");
        });
}

TEST_F (Drivers, KeepTheirCleanerOnlyFromTheYesToTheEndOfTheRun)
{
    forEachProduct (
        [&] (const auto& product)
        {
            SCOPED_TRACE (product.name);
            const SampleRegistry emptyRegistry;
            Console console ("y\n");
            CleanResult result;
            const auto paths = product.getPaths().size();
            int textsAtQuestion = 0, textsInRun = 0;

            logger.onLine = [&] (const std::string& line)
            {
                if (line == "Info: Cleaning: "s + product.name)
                    textsInRun = countLiveTexts();
            };
            console.onRead = [&] { textsAtQuestion = countLiveTexts(); };
            const auto textsBefore = countLiveTexts();

            product.driver (result);

            EXPECT_EQ (textsAtQuestion, textsBefore);
            EXPECT_EQ (textsInRun, textsBefore + paths + 2); // plus the product's name and the logged line
            EXPECT_EQ (countLiveTexts(), textsBefore);
        });
}
