#include "FindUninstaller.h"

#include "../logging/Log.h"
#include "Registry.h"

#include <algorithm>
#include <iterator>

namespace TessaraWorks
{

using Registry::WideChar;

// A value of any type may lack its terminator, and after a short value the buffer still holds the rest of
// an earlier one. So the string ends at the first terminator, or at the end of the buffer.
template <size_t length>
static juce::String textIn (const WideChar (&buffer)[length])
{
    WideChar terminated[length + 1];
    *std::copy (std::begin (buffer), std::end (buffer), terminated) = 0;

    return juce::String (juce::CharPointer_UTF16 (terminated));
}

bool findUninstaller (const juce::String& displayNameFragment, juce::String& uninstallerPath)
{
    const juce::String rootPath ("SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall");
    const juce::String displayNameValue ("DisplayName");
    const juce::String uninstallStringValue ("UninstallString");

    WideChar name[2048] = {};
    WideChar entryPath[1024] = {};
    WideChar displayName[1024] = {};
    WideChar uninstallString[1024] = {};

    uninstallerPath.clear();

    Registry::Key root = nullptr;

    if (Registry::openKey (rootPath.toUTF16(), Registry::readAccess, root) != 0)
    {
        log (Critical, "Failed to open the Windows registry key: " + rootPath);
        return false;
    }

    // Deliberate: the capacity is the size in bytes, although code units are counted. It cannot
    // overflow: the name of a key has at most 255 of them.
    for (juce::uint32 index = 0; Registry::enumerateKey (root, index, name, sizeof (name)) == 0; ++index)
    {
        Registry::formatKeyPath (entryPath, rootPath.toUTF16(), name);

        Registry::Key entry = nullptr;

        if (Registry::openKey (entryPath, Registry::readAccess, entry) != 0)
        {
            // Deliberate: this ends the search, and the entries after this one are not looked at.
            log (Critical, "Failed to open the Windows registry subkey: " + textIn (entryPath));
            Registry::closeKey (entry);
            break;
        }

        if (Registry::queryValue (entry, displayNameValue.toUTF16(), displayName, sizeof (displayName)) == 0
            && textIn (displayName).contains (displayNameFragment))
        {
            if (Registry::queryValue (entry, uninstallStringValue.toUTF16(), uninstallString, sizeof (uninstallString))
                == 0)
                uninstallerPath = textIn (uninstallString).replace ("\"", "");

            // Deliberate: the matching entry stays open until the process exits.
            Registry::closeKey (root);
            return true;
        }

        Registry::closeKey (entry);
    }

    Registry::closeKey (root);
    return false;
}

} // namespace TessaraWorks
