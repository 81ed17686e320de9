#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <locale>
#include <windows.h>

static bool isWine() { return GetProcAddress (GetModuleHandleW (L"ntdll.dll"), "wine_get_version") != nullptr; }

TEST (Image, LoadsNoDllOfTheSystemsThatLiesBesideIt)
{
    if (isWine())
        GTEST_SKIP() << "Wine takes a DLL from the program's folder, whatever the program's image asks for.";

    const juce::File program (ORVEX_PROGRAM);
    const TemporaryFolder folder;
    const auto copy = folder.getChildFile (program.getFileName());
    ASSERT_TRUE (program.copyFileTo (copy));
    folder.makeFile ("winmm.dll"); // no DLL at all: who takes it does not start
    juce::ChildProcess process;

    ASSERT_TRUE (process.start (juce::StringArray { copy.getFullPathName(), "--version" }));

    const auto output = process.readAllProcessOutput();
    EXPECT_TRUE (output.startsWith (ORVEX_CLEANER_NAME " " ORVEX_CLEANER_VERSION)) << output;
}

// What has no entry is taken for a function without a frame, and its caller for what lies on the stack.
TEST (Image, HasTheUnwindInformationOfTheStandardLibrary)
{
    const std::ctype<char>& (*const function) (const std::locale&) = &std::use_facet<std::ctype<char>>;
    DWORD64 image = 0;
    EXPECT_NE (RtlLookupFunctionEntry (reinterpret_cast<DWORD64> (function), &image, nullptr), nullptr);
}
