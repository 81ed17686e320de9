#include "CleanerFixture.h"

#include <windows.h>

using namespace TessaraWorks;

// Keeps a file open without sharing it.
class FileInUse
{
public:
    explicit FileInUse (const juce::File& file)
        : handle (CreateFileW (file.getFullPathName().toWideCharPointer(),
                               GENERIC_READ,
                               0,
                               nullptr,
                               OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL,
                               nullptr))
    {
        EXPECT_NE (handle, INVALID_HANDLE_VALUE);
    }

    ~FileInUse() { CloseHandle (handle); }

    JUCE_DECLARE_NON_COPYABLE (FileInUse)

private:
    const HANDLE handle;
};

TEST_F (Cleaner, TreatsPathsThatDifferInCaseAsOneAndKeepsTheFirst)
{
    folder.make ({ "PRODUCT/" });
    listDirectories ({ "PRODUCT", "product" });

    EXPECT_EQ (clean(), succeeded (1, 0, directoryDeleted ("PRODUCT")));
}

TEST_F (Cleaner, FailsATreeWithAFileInUseAndRemovesTheRest)
{
    folder.make ({ "tree/a/file", "tree/m/file", "tree/z/file" });
    const FileInUse fileInUse (folder.getChildFile ("tree/m/file"));
    listDirectories ({ "tree" });

    EXPECT_EQ (clean(), failed (directoryNotDeleted ("tree"), { "tree/m/file" }));
}

TEST_F (Cleaner, DoesNotClearAReadOnlyAttribute)
{
    const auto file = folder.makeFile ("file");
    file.setReadOnly (true);
    listFiles ({ "file" });

    EXPECT_EQ (clean(), failed (fileNotDeleted ("file"), { "file" }));
    EXPECT_NE (GetFileAttributesW (file.getFullPathName().toWideCharPointer()) & FILE_ATTRIBUTE_READONLY, 0u);
}

static void setAttributes (const juce::File& file, DWORD attributes)
{
    const auto* path = file.getFullPathName().toWideCharPointer();
    ASSERT_TRUE (SetFileAttributesW (path, attributes));
    ASSERT_EQ (GetFileAttributesW (path) & attributes, attributes);
}

TEST_F (Cleaner, RemovesHiddenAndSystemFiles)
{
    setAttributes (folder.makeFile ("tree/file"), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    setAttributes (folder.makeFile ("tree/hidden/file"), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    setAttributes (folder.getChildFile ("tree/hidden"), FILE_ATTRIBUTE_HIDDEN);
    ASSERT_FALSE (HasFatalFailure());
    listDirectories ({ "tree" });

    EXPECT_EQ (clean(), succeeded (1, 0, directoryDeleted ("tree")));
}

TEST_F (Cleaner, RemovesFoldersWhosePathsHaveMoreThan260Characters)
{
    auto innermost = folder.makeFolder ("tree").getFullPathName();

    for (int number = 0; number < 5; ++number)
    {
        innermost += "\\" + juce::String::repeatedString ("x", 100);
        const auto unlimited = "\\\\?\\" + innermost; // allows a path of any length on every Windows
        ASSERT_TRUE (CreateDirectoryW (unlimited.toWideCharPointer(), nullptr));
    }

    if (! juce::File (innermost).isDirectory())
        GTEST_SKIP() << "This system is not configured for long paths.";

    listDirectories ({ "tree" });

    EXPECT_EQ (clean(), succeeded (1, 0, directoryDeleted ("tree")));
}
