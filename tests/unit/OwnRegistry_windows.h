#pragma once

#include "ReplacedImport_windows.h"

#include <gtest/gtest.h>

#include <juce_core/juce_core.h>

#include <windows.h>

#include <stdexcept>

/** Gives the program, while it lives, two empty keys in place of HKEY_LOCAL_MACHINE and
    HKEY_CURRENT_USER, so that it opens none of the machine's own keys.

    RegOverridePredefKey would affect every DLL of the process as well. The shell would then look for
    the special folders in the empty keys.

    The two keys are volatile: if the process is killed, they go when the user logs off. All keys below
    them must be volatile too.
*/
class OwnRegistry
{
public:
    OwnRegistry() { current = this; }

    ~OwnRegistry()
    {
        RegCloseKey (machine);
        RegCloseKey (user);
        EXPECT_EQ (RegDeleteTreeW (HKEY_CURRENT_USER, path.toWideCharPointer()), ERROR_SUCCESS) << path;
    }

    JUCE_DECLARE_NON_COPYABLE (OwnRegistry)

private:
    /** Throws on failure, and so ends the test before it can use a key of the machine. */
    HKEY create (const juce::String& name) const
    {
        HKEY key = nullptr;
        const auto result = RegCreateKeyExW (HKEY_CURRENT_USER,
                                             (path + "\\" + name).toWideCharPointer(),
                                             0,
                                             nullptr,
                                             REG_OPTION_VOLATILE,
                                             KEY_ALL_ACCESS,
                                             nullptr,
                                             &key,
                                             nullptr);

        if (result != ERROR_SUCCESS)
            throw std::runtime_error ("A test's own registry key cannot be made");

        return key;
    }

    static LSTATUS WINAPI open (HKEY hive, const wchar_t* subkey, DWORD options, REGSAM rights, HKEY* key)
    {
        if (hive == HKEY_LOCAL_MACHINE)
            hive = current->machine;
        else if (hive == HKEY_CURRENT_USER)
            hive = current->user;

        return current->openKey.original (hive, subkey, options, rights, key);
    }

    static inline OwnRegistry* current = nullptr;

    const juce::String path = "Software\\Tests of Orvex Cleaner " + juce::Uuid().toDashedString();

public:
    const HKEY machine = create ("machine");
    const HKEY user = create ("user");

private:
    const ReplacedImport<decltype (open)> openKey { "RegOpenKeyExW", open };
};
