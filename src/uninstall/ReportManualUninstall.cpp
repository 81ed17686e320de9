#include "ReportManualUninstall.h"

#include "../logging/Log.h"

namespace TessaraWorks
{

void reportManualUninstall (const juce::String& productName, const juce::String& uninstallerPath)
{
    // Advice, and deliberately not marked as a warning.
    log (Info, "Existing " + productName + " software installation detected.");
    log (Info, "Please first uninstall this software using Add/Remove Programs.");

    // Of a command that is no full path, such as MsiExec.exe with arguments, the library's debug build complains.
    if (uninstallerPath.isNotEmpty() && juce::File (uninstallerPath).existsAsFile())
        log (Info, "You can also run the uninstaller directly: " + uninstallerPath);

    log (Info,
         "You can re-run this cleaner after " + productName + " has been uninstalled to clean up any final files.");
}

} // namespace TessaraWorks
