#include "CleanAll.h"

#include "../logging/Log.h"
#include "ProductOffers.h"

namespace TessaraWorks
{

enum class Counts
{
    ofThisStep,
    ofStepBefore
};

struct Step
{
    const ProductOffer& product;
    Counts counts;
};

void cleanAll (CleanResult& total)
{
    const Step steps[] = {
        { orvexStudioOffer, Counts::ofThisStep },
        { contentOffer, Counts::ofStepBefore }, // deliberate: the studio is counted twice, the content never
        { velantoneMediaServerOffer, Counts::ofThisStep },
        { productManagerOffer, Counts::ofThisStep },
        { companyOffer, Counts::ofThisStep },
    };

    log (Info, "All installed Orvex & Velantone products will be cleaned.");

    juce::int32 stepDirectories = 0;
    juce::int32 stepFiles = 0;

    for (const auto& step : steps)
    {
        CleanResult result;
        offer (step.product, result);

        if (step.counts == Counts::ofThisStep)
        {
            stepDirectories = result.directoriesRemoved;
            stepFiles = result.filesRemoved;
        }

        total.directoriesRemoved += stepDirectories;
        total.filesRemoved += stepFiles;

        if (! result.success)
            total.success = false;
    }
}

} // namespace TessaraWorks
