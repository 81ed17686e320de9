#include "OrvexStudioCleaner.h"

#include "../cleaning/BaseLocations.h"
#include "UninstallStep.h"

namespace TessaraWorks
{

OrvexStudioCleaner::OrvexStudioCleaner()
{
    const auto programFiles = getProgramFiles();
    const auto sharedData = getSharedData();
    const auto userData = getUserData();

    const auto vst3Folder = programFiles.getChildFile ("Common Files").getChildFile ("VST3");
    const auto pluginData = sharedData.getChildFile ("TessaraWorks").getChildFile ("Plugins");

    addDirectories ({
        { programFiles, "Orvex" },
        { programFiles, "OrvexStudio" },
        { programFiles, "Orvex Studio" },
        { pluginData, "Orvex" },
        { pluginData, "OrvexStudio" }, // deliberate: there is no "Orvex Studio" here
        { userData, "Orvex" },
        { userData, "OrvexMonitor" },
        { userData, "Orvex Monitor" },
        { userData, "OrvexMonitorHeadless" },
        { userData, "VelantoneEQ" },
        { vst3Folder, "TessaraWorks" },
        { vst3Folder, "Orvex.vst3" },
        { vst3Folder, "OrvexAudioBus.vst3" },
        { vst3Folder, "OrvexMonitor.vst3" },
        { vst3Folder, "OrvexReference.vst3" },
    });
}

juce::String OrvexStudioCleaner::getProductName() const { return "Orvex Studio"; }

void OrvexStudioCleaner::preClean (CleanResult& result)
{
    runUninstallStep ({ "Orvex version", "/SILENT", "Orvex" }, result);
    runUninstallStep ({ "Orvex Studio", "/SILENT", "Orvex Studio" }, result); // deliberate: after a failure, too
}

} // namespace TessaraWorks
