#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <locale>
#include <windows.h>

static bool isWine() { return GetProcAddress (GetModuleHandleW (L"ntdll.dll"), "wine_get_version") != nullptr; }

TEST (Image, LoadsNoSystemDllFromItsOwnFolder)
{
    if (isWine())
        GTEST_SKIP() << "Wine loads a DLL from the program's folder, whatever the program's image requests.";

    const juce::File program (ORVEX_PROGRAM);
    const TemporaryFolder folder;
    const auto copy = folder.getChildFile (program.getFileName());
    ASSERT_TRUE (program.copyFileTo (copy));
    folder.makeFile ("winmm.dll"); // not a DLL: a program that loads it does not start
    juce::ChildProcess process;

    ASSERT_TRUE (process.start (juce::StringArray { copy.getFullPathName(), "--version" }));

    const auto output = process.readAllProcessOutput();
    EXPECT_TRUE (output.startsWith (ORVEX_CLEANER_NAME " " ORVEX_CLEANER_VERSION)) << output;
}

// The unwinder treats a function without an entry as one without a frame, and the top of the stack as its return
// address.
TEST (Image, HasTheUnwindInformationOfTheStandardLibrary)
{
    const std::ctype<char>& (*const function) (const std::locale&) = &std::use_facet<std::ctype<char>>;
    DWORD64 image = 0;
    EXPECT_NE (RtlLookupFunctionEntry (reinterpret_cast<DWORD64> (function), &image, nullptr), nullptr);
}
