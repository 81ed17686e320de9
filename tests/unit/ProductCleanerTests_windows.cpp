#include "RecordingLogger.h"
#include "TemporaryFolder.h"
#include "TestCleaner.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <thread>

using namespace TessaraWorks;

// Keeps a file open, for nobody else to touch.
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

    FileInUse (const FileInUse&) = delete;
    FileInUse& operator= (const FileInUse&) = delete;

private:
    const HANDLE handle;
};

TEST (ProductCleaner, TakesPathsThatDifferInCaseForOneAndKeepsTheFirst)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto first = folder.makeFolder ("PRODUCT");
    TestCleaner cleaner;

    cleaner.addDirectory (first);
    cleaner.addDirectory (folder.getChildFile ("product"));
    const auto result = cleaner.clean();

    EXPECT_FALSE (first.exists());
    EXPECT_EQ (result.directoriesRemoved, 1);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (first),
                        "Info: Directory deleted: " + pathOf (first),
                        "Info: Directories removed: 1",
                        "Info: Files removed: 0",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, FailsAFileThatIsOpenInAnotherApplication)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto file = folder.makeFile ("file");
    const FileInUse open (file);
    TestCleaner cleaner;
    cleaner.addDirectory (file);

    const auto result = cleaner.clean();

    EXPECT_TRUE (file.exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Warning: Directory is actually a file, attempting to delete file...",
                        "Critical: Unable to delete file: " + pathOf (file),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product encountered errors and could not be removed." }));
}

TEST (ProductCleaner, FailsATreeWithAFileThatIsOpenInAnotherApplicationAndRemovesTheRest)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto file = folder.makeFile ("tree/m/file");
    const auto before = folder.makeFile ("tree/a/file");
    const auto after = folder.makeFile ("tree/z/file");
    const auto tree = folder.getChildFile ("tree");
    const FileInUse open (file);
    TestCleaner cleaner;
    cleaner.addDirectory (tree);

    const auto result = cleaner.clean();

    EXPECT_TRUE (file.exists());
    EXPECT_FALSE (before.getParentDirectory().exists());
    EXPECT_FALSE (after.getParentDirectory().exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (logger.lines[2], "Critical: Unable to delete directory: " + pathOf (tree));
}

TEST (ProductCleaner, FailsATreeWithAFileThatIsOpenedHalfWayAndRemovesTheRest)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto tree = folder.makeFolder ("tree");

    for (int number = 0; number < 1000; ++number)
        tree.getChildFile (juce::String (number)).create();

    const auto files = tree.findChildFiles (juce::File::findFiles, false);
    const auto first = files.getFirst();
    const auto last = files.getLast();
    TestCleaner cleaner;
    cleaner.addDirectory (tree);

    std::unique_ptr<FileInUse> open;
    std::thread other (
        [&]
        {
            while (first.exists())
                ;

            open = std::make_unique<FileInUse> (last);
        });
    const auto result = cleaner.clean();
    other.join();

    EXPECT_FALSE (result.success);
    EXPECT_EQ (tree.findChildFiles (juce::File::findFilesAndDirectories, false), juce::Array<juce::File> { last });
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (tree),
                        "Critical: Unable to delete directory: " + pathOf (tree),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product encountered errors and could not be removed." }));
}

TEST (ProductCleaner, ClearsNoReadOnlyAttribute)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto file = folder.makeFile ("file");
    file.setReadOnly (true);
    TestCleaner cleaner;
    cleaner.files.add (file);

    EXPECT_FALSE (cleaner.clean().success);
    EXPECT_NE (GetFileAttributesW (file.getFullPathName().toWideCharPointer()) & FILE_ATTRIBUTE_READONLY, 0u);
}

static void setAttributes (const juce::File& file, DWORD attributes)
{
    const auto* path = file.getFullPathName().toWideCharPointer();
    ASSERT_TRUE (SetFileAttributesW (path, attributes));
    ASSERT_EQ (GetFileAttributesW (path) & attributes, attributes);
}

TEST (ProductCleaner, RemovesHiddenAndSystemFiles)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto tree = folder.makeFolder ("tree");
    setAttributes (folder.makeFile ("tree/file"), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    setAttributes (folder.makeFile ("tree/hidden/file"), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    setAttributes (folder.getChildFile ("tree/hidden"), FILE_ATTRIBUTE_HIDDEN);
    ASSERT_FALSE (HasFatalFailure());
    TestCleaner cleaner;
    cleaner.addDirectory (tree);

    EXPECT_TRUE (cleaner.clean().success);
    EXPECT_FALSE (tree.exists());
}

TEST (ProductCleaner, RemovesFoldersWhosePathsHaveMoreThan260Characters)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto tree = folder.makeFolder ("tree");
    auto innermost = tree.getFullPathName();

    for (int number = 0; number < 5; ++number)
    {
        innermost += "\\" + juce::String::repeatedString ("x", 100);
        const auto unlimited = "\\\\?\\" + innermost; // a path of any length, wherever Windows runs
        ASSERT_TRUE (CreateDirectoryW (unlimited.toWideCharPointer(), nullptr));
    }

    if (! juce::File (innermost).isDirectory())
        GTEST_SKIP() << "This system is not set up to let programs have long paths.";

    TestCleaner cleaner;
    cleaner.addDirectory (tree);

    EXPECT_TRUE (cleaner.clean().success);
    EXPECT_FALSE (tree.exists());
}
