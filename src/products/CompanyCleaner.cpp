#include "CompanyCleaner.h"

#include "../cleaning/BaseLocations.h"

namespace TessaraWorks
{

CompanyCleaner::CompanyCleaner()
{
    const auto vst3Folder = getProgramFiles().getChildFile ("Common Files").getChildFile ("VST3");

    addDirectories ({
        { getSharedData(), "TessaraWorks" },
        { vst3Folder, "TessaraWorks" },
    });
}

juce::String CompanyCleaner::getProductName() const { return "Tessara Works Global Directories"; }

} // namespace TessaraWorks
