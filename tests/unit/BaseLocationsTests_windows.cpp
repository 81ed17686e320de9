#include "cleaning/BaseLocations.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <shlobj.h>

using namespace TessaraWorks;

static juce::String folderOf (int csidl)
{
    wchar_t path[MAX_PATH] = {};
    EXPECT_TRUE (SHGetSpecialFolderPathW (nullptr, path, csidl, FALSE));
    return path;
}

TEST (BaseLocations, AreTheFoldersThatWindowsNames)
{
    EXPECT_EQ (getSharedData().getFullPathName(), folderOf (35));
    EXPECT_EQ (getProgramFiles().getFullPathName(), folderOf (38));
    EXPECT_EQ (getUserData().getFullPathName(), folderOf (26));
}
