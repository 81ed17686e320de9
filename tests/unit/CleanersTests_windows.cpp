#include "../shared/Products.h"
#include "RecordingLogger.h"
#include "ReplacedImport_windows.h"

#include <gtest/gtest.h>

static Lines asked;

static DWORD WINAPI noteAttributes (const wchar_t* path)
{
    asked.push_back (juce::String (path).toStdString());
    return INVALID_FILE_ATTRIBUTES;
}

static HANDLE WINAPI noteOpening (const wchar_t* path, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE)
{
    asked.push_back (juce::String (path).toStdString());
    return INVALID_HANDLE_VALUE;
}

static HANDLE WINAPI noteListing (const wchar_t* path, WIN32_FIND_DATAW*)
{
    asked.push_back (juce::String (path).toStdString());
    return INVALID_HANDLE_VALUE;
}

static BOOL WINAPI noteMaking (const wchar_t* path, SECURITY_ATTRIBUTES*)
{
    asked.push_back (juce::String (path).toStdString());
    return FALSE;
}

TEST (Cleaners, TouchNothingOnDiskWhenTheyAreBuilt)
{
    const ReplacedImport attributes ("GetFileAttributesW", noteAttributes);
    const ReplacedImport opening ("CreateFileW", noteOpening);
    const ReplacedImport listing ("FindFirstFileW", noteListing);
    const ReplacedImport making ("CreateDirectoryW", noteMaking);
    asked.clear();

    forEachProduct ([] (const auto& product) { EXPECT_FALSE (product.getPaths().isEmpty()); });

    EXPECT_EQ (asked, Lines {});
}
