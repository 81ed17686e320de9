#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** Looks for an installed product among the machine-wide uninstall entries of the 64-bit registry.

    The first entry whose display name contains the fragment, in the same letter case, counts; the
    order is the registry's. A key that cannot be opened is logged, ends the search and counts as not
    found. An entry without a readable name is skipped in silence.

    @param displayNameFragment  the part to look for; an empty one matches any readable name
    @param uninstallerPath      receives the entry's uninstall command without its double quotes;
                                empty if it has none that fits into 2048 bytes, and if nothing was
                                found
    @returns    whether an entry matched, with or without a command
*/
bool findUninstaller (const juce::String& displayNameFragment, juce::String& uninstallerPath);

} // namespace TessaraWorks
