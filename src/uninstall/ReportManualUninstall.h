#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** Tells the user, in the log, to uninstall a product by hand and to run the cleaner again.

    @param productName      the name to show
    @param uninstallerPath  offered for running by hand if it is an existing file; may be empty
*/
void reportManualUninstall (const juce::String& productName, const juce::String& uninstallerPath);

} // namespace TessaraWorks
