#include "FileAccess_linux.h"
#include "Mutexes_linux.h"
#include "RecordingLogger.h"
#include "TemporaryFolder.h"
#include "TestCleaner.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace TessaraWorks;

TEST (ProductCleaner, CountsAListedDirectoryThatVanishesAfterTheFirstTestAsAFile)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeFolder ("directory");
    TestCleaner cleaner;
    cleaner.addDirectory (directory);

    const AfterFileAccess hook (directory, [&] { directory.deleteRecursively(); });
    const auto result = cleaner.clean();

    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 1);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Warning: Directory is actually a file, attempting to delete file...",
                        "Info: File deleted: " + pathOf (directory),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 1",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, SaysNothingOfAListedFileThatVanishesAfterTheFirstTest)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto vanishing = folder.makeFile ("vanishing");
    const auto staying = folder.makeFile ("staying");
    TestCleaner cleaner;
    cleaner.files.add (vanishing);
    cleaner.files.add (staying);

    const AfterFileAccess hook (vanishing, [&] { vanishing.deleteFile(); });
    const auto result = cleaner.clean();

    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 1);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting file: " + pathOf (staying),
                        "Info: File deleted: " + pathOf (staying),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 1",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, FailsATreeThatGrowsAfterItWasListedAndLeavesWhatIsNew)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto inner = folder.makeFile ("tree/inner/file");
    const auto tree = folder.getChildFile ("tree");
    const auto added = folder.getChildFile ("tree/added");
    TestCleaner cleaner;
    cleaner.addDirectory (tree);

    const AfterFileAccess hook (inner, [&] { added.create(); });
    const auto result = cleaner.clean();

    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_FALSE (inner.getParentDirectory().exists());
    EXPECT_TRUE (added.existsAsFile());
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (tree),
                        "Critical: Unable to delete directory: " + pathOf (tree),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product encountered errors and could not be removed." }));
}

TEST (ProductCleaner, TakesNoLock)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    TestCleaner cleaner;
    cleaner.addDirectory (folder.makeFile ("directory/file").getParentDirectory());
    cleaner.files.add (folder.makeFile ("file"));

    const Mutexes mutexes;
    cleaner.clean();

    EXPECT_EQ (mutexes.attempts, 0);
}

TEST (ProductCleaner, TellsPathsApartThatDifferInCase)
{
    const TemporaryFolder folder;
    TestCleaner cleaner;

    cleaner.addDirectory (folder.getChildFile ("product"));
    cleaner.addDirectory (folder.getChildFile ("Product"));

    EXPECT_EQ (cleaner.directories.size(), 2);
}

TEST (ProductCleaner, RemovesAListedLinkToADirectoryAndKeepsTheDirectory)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto kept = folder.makeFile ("target/file");
    const auto link = folder.getChildFile ("link");
    folder.getChildFile ("target").createSymbolicLink (link, false);
    TestCleaner cleaner;
    cleaner.addDirectory (link);

    const auto result = cleaner.clean();

    EXPECT_FALSE (link.isSymbolicLink());
    EXPECT_TRUE (kept.exists());
    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 1);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (link),
                        "Info: Directory deleted: " + pathOf (link),
                        "Info: Directories removed: 1",
                        "Info: Files removed: 0",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, RemovesAListedLinkToAFileAndKeepsTheFile)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto kept = folder.makeFile ("target");
    const auto link = folder.getChildFile ("link");
    kept.createSymbolicLink (link, false);
    TestCleaner cleaner;
    cleaner.addDirectory (link);

    const auto result = cleaner.clean();

    EXPECT_FALSE (link.isSymbolicLink());
    EXPECT_TRUE (kept.exists());
    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 1);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Warning: Directory is actually a file, attempting to delete file...",
                        "Info: File deleted: " + pathOf (link),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 1",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, SkipsAListedLinkThatPointsNowhere)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto link = folder.getChildFile ("link");
    folder.getChildFile ("missing").createSymbolicLink (link, false);
    TestCleaner cleaner;
    cleaner.addDirectory (link);

    const auto result = cleaner.clean();

    EXPECT_TRUE (link.isSymbolicLink());
    EXPECT_TRUE (result.success);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Debug: Skipping directory not found: " + pathOf (link),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, RemovesTheLinksInATreeAndKeepsWhatTheyPointTo)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto keptInFolder = folder.makeFile ("target/inner/file");
    const auto kept = folder.makeFile ("target file");
    const auto tree = folder.makeFolder ("tree/inner").getParentDirectory();
    folder.getChildFile ("target").createSymbolicLink (tree.getChildFile ("to folder"), false);
    folder.getChildFile ("target").createSymbolicLink (tree.getChildFile ("inner/to folder"), false);
    kept.createSymbolicLink (tree.getChildFile ("to file"), false);
    folder.getChildFile ("missing").createSymbolicLink (tree.getChildFile ("to nothing"), false);
    tree.createSymbolicLink (tree.getChildFile ("to the tree itself"), false);
    TestCleaner cleaner;
    cleaner.addDirectory (tree);

    const auto result = cleaner.clean();

    EXPECT_FALSE (tree.exists());
    EXPECT_TRUE (keptInFolder.exists());
    EXPECT_TRUE (kept.exists());
    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 1);
    EXPECT_EQ (result.filesRemoved, 0);
}

TEST (ProductCleaner, RemovesNamesOf255Characters)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto name = juce::String::repeatedString ("n", 255);
    const auto directory = folder.makeFolder (name);
    const auto file = folder.makeFile (name + "/" + name);
    ASSERT_TRUE (file.existsAsFile());
    TestCleaner cleaner;
    cleaner.addDirectory (directory);

    EXPECT_TRUE (cleaner.clean().success);
    EXPECT_FALSE (directory.exists());
}

TEST (ProductCleaner, FailsADirectoryWhoseContentsItMayNotSee)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeFolder ("directory");
    const auto file = folder.makeFile ("directory/closed/file");
    chmod (pathOf (file.getParentDirectory()).c_str(), 0);
    TestCleaner cleaner;
    cleaner.addDirectory (directory);

    const auto result = cleaner.clean();

    chmod (pathOf (file.getParentDirectory()).c_str(), 0700);
    EXPECT_TRUE (file.exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (logger.lines[2], "Critical: Unable to delete directory: " + pathOf (directory));
}

TEST (ProductCleaner, SkipsAnEntryThatItMayNotSee)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeFolder ("closed/directory");
    chmod (pathOf (directory.getParentDirectory()).c_str(), 0);
    TestCleaner cleaner;
    cleaner.addDirectory (directory);

    const auto result = cleaner.clean();

    chmod (pathOf (directory.getParentDirectory()).c_str(), 0700);
    EXPECT_TRUE (directory.exists());
    EXPECT_TRUE (result.success);
    EXPECT_EQ (logger.lines[1], "Debug: Skipping directory not found: " + pathOf (directory));
}
