#include "ReportManualUninstall.h"

#include "../logging/Log.h"

namespace TessaraWorks
{

void reportManualUninstall (const juce::String& productName, const juce::String& uninstallerPath)
{
    // Deliberate: advice is not marked as a warning.
    log (Info, "Existing " + productName + " software installation detected.");
    log (Info, "Please first uninstall this software using Add/Remove Programs.");

    // The library's debug build complains about a command that is no full path, such as MsiExec.exe with arguments.
    if (uninstallerPath.isNotEmpty() && juce::File (uninstallerPath).existsAsFile())
        log (Info, "You can also run the uninstaller directly: " + uninstallerPath);

    log (Info,
         "You can re-run this cleaner after " + productName + " has been uninstalled to clean up any final files.");
}

} // namespace TessaraWorks
