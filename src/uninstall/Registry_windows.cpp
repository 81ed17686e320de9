#include "Registry.h"

#include <windows.h>

namespace TessaraWorks::Registry
{

static_assert (readAccess == KEY_READ);

juce::int32 openKey (const WideChar* path, juce::uint32 access, Key& key)
{
    HKEY opened = nullptr;
    const auto result = RegOpenKeyExW (HKEY_LOCAL_MACHINE, path, 0, access, &opened);

    if (result == ERROR_SUCCESS)
        key = opened;

    return result;
}

juce::int32 enumerateKey (Key key, juce::uint32 index, WideChar* name, juce::uint32 capacity)
{
    DWORD length = capacity;
    return RegEnumKeyExW (static_cast<HKEY> (key), index, name, &length, nullptr, nullptr, nullptr, nullptr);
}

juce::int32 queryValue (Key key, const WideChar* valueName, void* data, juce::uint32 capacityBytes)
{
    DWORD type = 0;
    DWORD size = capacityBytes;
    return RegQueryValueExW (static_cast<HKEY> (key), valueName, nullptr, &type, static_cast<BYTE*> (data), &size);
}

void closeKey (Key key) { RegCloseKey (static_cast<HKEY> (key)); }

void formatKeyPath (WideChar (&path)[1024], const WideChar* rootPath, const WideChar* name)
{
    wsprintfW (path, L"%s\\%s", rootPath, name);
}

} // namespace TessaraWorks::Registry
