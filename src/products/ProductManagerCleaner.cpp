#include "ProductManagerCleaner.h"

#include "../cleaning/BaseLocations.h"
#include "UninstallStep.h"

namespace TessaraWorks
{

ProductManagerCleaner::ProductManagerCleaner()
{
    const auto programFiles = getProgramFiles();
    const auto makerData = getSharedData().getChildFile ("TessaraWorks");
    const auto makerApplications = makerData.getChildFile ("Applications");
    const auto userData = getUserData();

    addDirectories ({
        { programFiles, "OrvexProductManager" },
        { programFiles, "Orvex Product Manager" },
        { makerData, "OrvexProductManager" },
        { makerData, "Orvex Product Manager" },
        { makerApplications, "OrvexProductManager" },
        { makerApplications, "Orvex Product Manager" },
        { userData, "OrvexProductManager" },
        { userData, "Orvex Product Manager" },
    });
}

juce::String ProductManagerCleaner::getProductName() const { return "Orvex Product Manager"; }

void ProductManagerCleaner::preClean (CleanResult& result)
{
    runUninstallStep ({ "Orvex Product Manager", "/SILENT", "Orvex Product Manager" }, result);
}

} // namespace TessaraWorks
