#include "cleaning/BaseLocations.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace TessaraWorks;

TEST (BaseLocations, AreTheFoldersThatJuceNamesOnLinux)
{
    EXPECT_EQ (getSharedData().getFullPathName(), "/opt");
    EXPECT_EQ (getProgramFiles().getFullPathName(), "/usr");
    EXPECT_EQ (getUserData().getFullPathName(), juce::String (std::getenv ("HOME")) + "/.config");
}
