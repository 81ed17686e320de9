#pragma once

#include "RecordingLogger.h"

/** Returns the lines for a product whose uninstaller does not start or does not end in time. The path
    must be empty unless it leads to a file.
*/
inline Lines notUninstalled (const std::string& product, int exitCode, const juce::String& path = {})
{
    Lines lines { "Warning: Cleaner failed to launch the uninstaller.",
                  "Info: Uninstaller exit code: " + std::to_string (exitCode),
                  "Info: Existing " + product + " software installation detected.",
                  "Info: Please first uninstall this software using Add/Remove Programs." };

    if (path.isNotEmpty())
        lines.push_back ("Info: You can also run the uninstaller directly: " + path.toStdString());

    lines.push_back ("Info: You can re-run this cleaner after " + product
                     + " has been uninstalled to clean up any final files.");
    return lines;
}
