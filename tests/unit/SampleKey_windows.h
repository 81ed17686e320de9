#pragma once

#include "UninstallEntry.h"

#include <gtest/gtest.h>

#include <windows.h>

/** A new, volatile registry key, below any hive and in any view, that exists while this object does. */
class SampleKey
{
public:
    SampleKey (HKEY hiveToUse, const juce::String& pathToUse, REGSAM viewToUse = 0)
        : hive (hiveToUse)
        , path (pathToUse)
        , view (viewToUse)
    {
        DWORD disposition = 0;
        EXPECT_EQ (RegCreateKeyExW (hive,
                                    path.toWideCharPointer(),
                                    0,
                                    nullptr,
                                    REG_OPTION_VOLATILE,
                                    KEY_ALL_ACCESS | view,
                                    nullptr,
                                    &key,
                                    &disposition),
                   ERROR_SUCCESS);
        isNew = disposition == REG_CREATED_NEW_KEY;
        EXPECT_TRUE (isNew) << path;
    }

    ~SampleKey()
    {
        RegCloseKey (key);

        if (isNew)
            RegDeleteKeyExW (hive, path.toWideCharPointer(), view, 0);
    }

    JUCE_DECLARE_NON_COPYABLE (SampleKey)

    void set (const wchar_t* name, DWORD type, const Bytes& data) const
    {
        EXPECT_EQ (
            RegSetValueExW (
                key, name, 0, type, reinterpret_cast<const BYTE*> (data.data()), static_cast<DWORD> (data.size())),
            ERROR_SUCCESS);
    }

private:
    const HKEY hive;
    const juce::String path;
    const REGSAM view;
    HKEY key = nullptr;
    bool isNew = false;
};
