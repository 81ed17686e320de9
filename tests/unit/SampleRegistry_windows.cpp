#include "SampleRegistry.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <vector>

struct SampleRegistry::Implementation
{
    std::vector<juce::String> keyPaths;
};

static void setValue (HKEY key, const wchar_t* name, const std::optional<Bytes>& value)
{
    if (! value)
        return;

    // A text without a terminator goes in as REG_BINARY: to the other type, the system may add one.
    const auto size = value->size();
    const auto isTerminated = size >= 2 && size % 2 == 0 && value->substr (size - 2) == Bytes (2, '\0');

    ASSERT_EQ (RegSetValueExW (key,
                               name,
                               0,
                               isTerminated ? REG_SZ : REG_BINARY,
                               reinterpret_cast<const BYTE*> (value->data()),
                               static_cast<DWORD> (size)),
               ERROR_SUCCESS);
}

SampleRegistry::SampleRegistry()
    : implementation (std::make_unique<Implementation>())
{
}

SampleRegistry::~SampleRegistry()
{
    for (const auto& path : implementation->keyPaths)
        RegDeleteTreeW (HKEY_LOCAL_MACHINE, path.toWideCharPointer());
}

void SampleRegistry::add (const UninstallEntry& entry)
{
    const auto path = uninstallRoot + ("\\" + entry.keyName);
    HKEY key = nullptr;
    DWORD disposition = 0;

    ASSERT_EQ (
        RegCreateKeyExW (
            HKEY_LOCAL_MACHINE, path.toWideCharPointer(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, &disposition),
        ERROR_SUCCESS);
    ASSERT_EQ (disposition, static_cast<DWORD> (REG_CREATED_NEW_KEY)) << path;

    implementation->keyPaths.push_back (path);

    setValue (key, L"DisplayName", entry.displayName);
    setValue (key, L"UninstallString", entry.uninstallString);
    RegCloseKey (key);
}
