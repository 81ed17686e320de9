#include "FindUninstaller.h"

#include "../logging/Log.h"
#include "Registry.h"

#include <algorithm>
#include <iterator>

namespace TessaraWorks
{

using Registry::WideChar;

// A value need not be terminated, whatever its type, and behind a short one stands what an earlier
// value left in the buffer. So the text ends at a terminator or with the buffer, whichever is first.
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

    // The capacity is deliberately the size in bytes, where code units are counted. It cannot
    // overflow: a key's name has at most 255 of them.
    for (juce::uint32 index = 0; Registry::enumerateKey (root, index, name, sizeof (name)) == 0; ++index)
    {
        Registry::formatKeyPath (entryPath, rootPath.toUTF16(), name);

        Registry::Key entry = nullptr;

        if (Registry::openKey (entryPath, Registry::readAccess, entry) != 0)
        {
            // Deliberately ends the search: the entries behind this one are not looked at.
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

            // Deliberately leaves the matching entry open until the process exits.
            Registry::closeKey (root);
            return true;
        }

        Registry::closeKey (entry);
    }

    Registry::closeKey (root);
    return false;
}

} // namespace TessaraWorks
