#include "UninstallStep.h"

#include "../logging/Log.h"
#include "../uninstall/FindUninstaller.h"
#include "../uninstall/ReportManualUninstall.h"
#include "../uninstall/RunUninstaller.h"

namespace TessaraWorks
{

void runUninstallStep (const UninstallStep& step, CleanResult& result)
{
    juce::String uninstallerPath;

    if (! findUninstaller (step.displayNameFragment, uninstallerPath))
        return;

    juce::uint32 exitCode = 0;
    const auto finished = runUninstaller (uninstallerPath, exitCode, step.arguments);

    log (Info, "Uninstaller exit code: " + juce::String (exitCode));

    if (! finished)
    {
        reportManualUninstall (step.productName, uninstallerPath);
        result.success = false;
    }
}

} // namespace TessaraWorks
