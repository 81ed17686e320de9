#include "../shared/Products.h"
#include "CleanResults.h"
#include "Console.h"
#include "DisposableMachine.h"
#include "RecordingLogger.h"
#include "app/CleanAll.h"

#include <map>
#include <set>

using namespace TessaraWorks;

using Names = std::set<std::string>;

static Names namesOfAllProducts()
{
    Names names;
    forEachProduct ([&] (const auto& product) { names.insert (product.name); });
    return names;
}

class CleanAll : public DisposableMachine
{
protected:
    /** Makes a folder at each listed path. */
    void makeAllProducts()
    {
        forEachProduct (
            [&] (const auto& product)
            {
                for (const auto& path : product.getPaths())
                    makeFolder (path);
            });
    }

    /** Offers all products, answers yes for the accepted ones only, and returns the new total. */
    static CleanResult run (const Names& accepted, CleanResult total = {})
    {
        std::string answers, prompts;

        forEachProduct (
            [&] (const auto& product)
            {
                answers += accepted.count (product.name) > 0 ? "y\n" : "n\n";
                prompts += "Y/n? ";
            });

        const Console console (answers);
        cleanAll (total);
        EXPECT_EQ (console.output(), prompts);
        return total;
    }

    RecordingLogger logger;
};

TEST_F (CleanAll, CountsTheStudioTwiceTheContentNeverAndTheOthersOnce)
{
    const std::map<std::string, int> timesOfSome { { "Orvex Studio", 2 }, { "Velantone Content", 0 } };
    int sum = 0;

    forEachProduct (
        [&] (const auto& product)
        {
            SCOPED_TRACE (product.name);
            makeAllProducts();
            const auto times = timesOfSome.count (product.name) > 0 ? timesOfSome.at (product.name) : 1;
            const auto count = times * product.getPaths().size();
            sum += count;

            EXPECT_EQ (run ({ product.name }, { true, 100, 200 }), (CleanResult { true, 100 + count, 200 }));
        });

    makeAllProducts();
    EXPECT_EQ (run ({ "Orvex Studio", "Velantone Content" }), (CleanResult { true, 15 + 15, 0 }));

    makeAllProducts();
    EXPECT_EQ (run (namesOfAllProducts()), (CleanResult { true, sum - 1, 0 })); // studio and company share a folder
}

TEST_F (CleanAll, CountsNothingWhenEachQuestionIsDeclined)
{
    makeAllProducts();

    EXPECT_EQ (run ({}, { true, 100, 200 }), (CleanResult { true, 100, 200 }));
}

TEST_F (CleanAll, FailsWhenAnyStepFails)
{
    forEachProduct (
        [&] (const auto& product)
        {
            SCOPED_TRACE (product.name);
            const auto undeletable = makeUndeletableFolder (product.getPaths().getFirst());

            EXPECT_EQ (run ({ product.name }), (CleanResult { false, 0, 0 }));

            deleteEvenIfProtected (undeletable);
        });
}

TEST_F (CleanAll, CountsTheRemovalsOfAFailedStep)
{
    makeUndeletableFolder (userData.getChildFile ("Orvex"));
    makeFolder (programFiles.getChildFile ("Orvex"));
    makeFolder (programFiles.getChildFile ("Orvex Studio"));
    makeFile (programFiles.getChildFile ("Common Files/VST3/Orvex.vst3"));

    EXPECT_EQ (run ({ "Orvex Studio" }), (CleanResult { false, 2 + 2, 1 + 1 }));
}

TEST_F (CleanAll, CountsAFileOfTheOtherProductsOnce)
{
    makeFile (programFiles.getChildFile ("Common Files/VST3/TessaraWorks"));

    EXPECT_EQ (run ({ "Tessara Works Global Directories" }), (CleanResult { true, 0, 1 }));
}

TEST_F (CleanAll, KeepsAnEarlierFailure)
{
    EXPECT_EQ (run (namesOfAllProducts(), { false, 0, 0 }), (CleanResult { false, 0, 0 }));
}
