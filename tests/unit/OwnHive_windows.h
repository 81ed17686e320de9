#pragma once

#include <gtest/gtest.h>

#include <juce_core/juce_core.h>

#include <windows.h>

#include <stdexcept>

/** Gives this process, while it lives, an empty key in the place of a hive such as HKEY_LOCAL_MACHINE.
    What the process reads and writes there is nothing of the machine's. Child processes see the machine.

    The key lies below HKEY_CURRENT_USER and is volatile: if the process is ended from outside, the key
    goes when the user logs off. All keys below it have to be volatile too.
*/
class OwnHive
{
public:
    /** Throws, and so ends the test, rather than leave the test with the machine's hive. */
    explicit OwnHive (HKEY hiveToReplace)
        : hive (hiveToReplace)
    {
        RegCreateKeyExW (HKEY_CURRENT_USER,
                         path.toWideCharPointer(),
                         0,
                         nullptr,
                         REG_OPTION_VOLATILE,
                         KEY_ALL_ACCESS,
                         nullptr,
                         &key,
                         nullptr);

        if (key == nullptr || RegOverridePredefKey (hive, key) != ERROR_SUCCESS)
            throw std::runtime_error ("This process cannot have a registry hive of its own");
    }

    ~OwnHive()
    {
        RegOverridePredefKey (hive, nullptr);
        RegCloseKey (key);
        EXPECT_EQ (RegDeleteTreeW (HKEY_CURRENT_USER, path.toWideCharPointer()), ERROR_SUCCESS) << path;
    }

    JUCE_DECLARE_NON_COPYABLE (OwnHive)

private:
    const juce::String path = "Software\\Tests of Orvex Cleaner " + juce::Uuid().toDashedString();
    const HKEY hive;
    HKEY key = nullptr;
};
