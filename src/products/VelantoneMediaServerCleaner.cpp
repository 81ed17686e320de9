#include "VelantoneMediaServerCleaner.h"

#include "../cleaning/BaseLocations.h"

namespace TessaraWorks
{

VelantoneMediaServerCleaner::VelantoneMediaServerCleaner()
{
    const auto makerApplications = getSharedData().getChildFile ("TessaraWorks").getChildFile ("Applications");
    const auto userData = getUserData();

    addDirectories ({
        { makerApplications, "VelantoneMediaServer" },
        { makerApplications, "VelantonePlayer" },
        { userData, "VelantoneMediaServer" },
        { userData, "VelantonePlayer" },
    });
}

juce::String VelantoneMediaServerCleaner::getProductName() const { return "Velantone Media Server"; }

} // namespace TessaraWorks
