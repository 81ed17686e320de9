#include "DeletionAttempts.h"
#include "RecordingLogger.h"
#include "TemporaryFolder.h"
#include "TestCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (ProductCleaner, SaysThatARunWithoutEntriesSucceeded)
{
    const RecordingLogger logger;
    TestCleaner cleaner;

    const auto result = cleaner.clean();

    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, SkipsEntriesThatAreNotThereAndCallsThatASuccess)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    TestCleaner cleaner;
    cleaner.addDirectory (folder.getChildFile ("one"));
    cleaner.addDirectory (folder.getChildFile ("missing").getChildFile ("two"));
    cleaner.files.add (folder.getChildFile ("three"));

    const auto result = cleaner.clean();

    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Debug: Skipping directory not found: " + pathOf (folder.getChildFile ("one")),
                        "Debug: Skipping directory not found: "
                            + pathOf (folder.getChildFile ("missing").getChildFile ("two")),
                        "Debug: Skipping file not found: " + pathOf (folder.getChildFile ("three")),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, SkipsAnEntryWithAnEmptyPath)
{
    const RecordingLogger logger;
    TestCleaner cleaner;
    cleaner.addDirectory (juce::File());
    cleaner.files.add (juce::File());

    const auto result = cleaner.clean();

    EXPECT_TRUE (result.success);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Debug: Skipping directory not found: ",
                        "Debug: Skipping file not found: ",
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, RemovesAListedDirectoryWithAllItHoldsAndCountsItOnce)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto tree = folder.makeFolder ("tree");
    folder.makeFile ("tree/file");
    folder.makeFile ("tree/inner/deep/file");
    folder.makeFile ("tree/inner/deep/other file");
    folder.makeFolder ("tree/empty");
    const auto sibling = folder.makeFile ("tree2/file");
    TestCleaner cleaner;
    cleaner.addDirectory (tree);

    const auto result = cleaner.clean();

    EXPECT_FALSE (tree.exists());
    EXPECT_TRUE (sibling.exists());
    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 1);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (tree),
                        "Info: Directory deleted: " + pathOf (tree),
                        "Info: Directories removed: 1",
                        "Info: Files removed: 0",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, AnnouncesADirectoryBeforeItIsDeleted)
{
    RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeFolder ("directory");
    TestCleaner cleaner;
    cleaner.addDirectory (directory);

    std::vector<bool> wasThere;
    logger.onLine = [&] (const std::string&) { wasThere.push_back (directory.exists()); };
    cleaner.clean();

    ASSERT_EQ (logger.lines[1], "Info: Deleting directory: " + pathOf (directory));
    EXPECT_TRUE (wasThere[1]);
    ASSERT_EQ (logger.lines[2], "Info: Directory deleted: " + pathOf (directory));
    EXPECT_FALSE (wasThere[2]);
}

TEST (ProductCleaner, RemovesAListedDirectoryThatIsAFileAndCountsAFile)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto file = folder.makeFile ("Product.vst3");
    TestCleaner cleaner;
    cleaner.addDirectory (file);

    const auto result = cleaner.clean();

    EXPECT_FALSE (file.exists());
    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 1);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Warning: Directory is actually a file, attempting to delete file...",
                        "Info: File deleted: " + pathOf (file),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 1",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, CountsAListedDirectoryThatVanishedAfterTheTestsAsAFile)
{
    RecordingLogger logger;
    const TemporaryFolder folder;
    const auto file = folder.makeFile ("file");
    TestCleaner cleaner;
    cleaner.addDirectory (file);

    logger.onLine = [&] (const std::string& line)
    {
        if (line == "Warning: Directory is actually a file, attempting to delete file...")
            file.deleteFile();
    };
    const auto result = cleaner.clean();

    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.filesRemoved, 1);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Warning: Directory is actually a file, attempting to delete file...",
                        "Info: File deleted: " + pathOf (file),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 1",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, RemovesAListedFile)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto file = folder.makeFile ("file");
    TestCleaner cleaner;
    cleaner.files.add (file);

    const auto result = cleaner.clean();

    EXPECT_FALSE (file.exists());
    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 1);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting file: " + pathOf (file),
                        "Info: File deleted: " + pathOf (file),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 1",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, RemovesAListedFileThatIsADirectoryAndCountsADirectory)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeFolder ("directory");
    folder.makeFile ("directory/inner/file");
    TestCleaner cleaner;
    cleaner.files.add (directory);

    const auto result = cleaner.clean();

    EXPECT_FALSE (directory.exists());
    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 1);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Warning: File is actually a directory, attempting to delete recursively...",
                        "Info: Directory deleted: " + pathOf (directory),
                        "Info: Directories removed: 1",
                        "Info: Files removed: 0",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, TakesTheDirectoriesInOrderAndThenTheFilesInOrder)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto z = folder.makeFolder ("z");
    const auto a = folder.makeFolder ("a");
    const auto y = folder.makeFile ("y");
    const auto b = folder.makeFile ("b");
    TestCleaner cleaner;
    cleaner.files.add (y);
    cleaner.files.add (b);
    cleaner.addDirectory (z);
    cleaner.addDirectory (a);

    const auto result = cleaner.clean();

    EXPECT_EQ (result.directoriesRemoved, 2);
    EXPECT_EQ (result.filesRemoved, 2);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (z),
                        "Info: Directory deleted: " + pathOf (z),
                        "Info: Deleting directory: " + pathOf (a),
                        "Info: Directory deleted: " + pathOf (a),
                        "Info: Deleting file: " + pathOf (y),
                        "Info: File deleted: " + pathOf (y),
                        "Info: Deleting file: " + pathOf (b),
                        "Info: File deleted: " + pathOf (b),
                        "Info: Directories removed: 2",
                        "Info: Files removed: 2",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, RemovesEntriesAndContentsOfAnyName)
{
    const char* const names[] = {
        "name with blanks",
        ".hidden",
        "..two dots",
        "name.with.dots",
        "Gr\xc3\xb6\xc3\x9f\x65",
        "\xd0\xbc\xd1\x83\xd0\xb7\xd1\x8b\xd0\xba\xd0\xb0",
        "\xe9\x9f\xb3\xe6\xa5\xbd",
        "\xf0\x9f\x8e\xb5",
        "#$%&'()+,;=@[]^`{}~-!",
    };

    for (const auto* utf8 : names)
    {
        const auto name = juce::String::fromUTF8 (utf8);
        SCOPED_TRACE (name);

        const RecordingLogger logger;
        const TemporaryFolder folder;
        const auto directory = folder.makeFolder (name);
        folder.makeFile (name + "/" + name + "/" + name);
        folder.makeFile (name + "/" + name + "/file");
        ASSERT_TRUE (folder.getChildFile (name + "/" + name + "/" + name).existsAsFile());
        TestCleaner cleaner;
        cleaner.addDirectory (directory);

        EXPECT_TRUE (cleaner.clean().success);
        EXPECT_FALSE (directory.exists());
        EXPECT_EQ (logger.lines[2], "Info: Directory deleted: " + pathOf (directory));
    }
}

TEST (ProductCleaner, FailsAListedDirectoryThatCannotBeDeleted)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeUndeletableFile ("directory/file").getParentDirectory();
    TestCleaner cleaner;
    cleaner.addDirectory (directory);

    const auto result = cleaner.clean();

    EXPECT_TRUE (directory.exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (directory),
                        "Critical: Unable to delete directory: " + pathOf (directory),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product encountered errors and could not be removed." }));
}

TEST (ProductCleaner, FailsAListedDirectoryThatIsAFileThatCannotBeDeleted)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto file = folder.makeUndeletableFile ("folder/file");
    TestCleaner cleaner;
    cleaner.addDirectory (file);

    const auto result = cleaner.clean();

    EXPECT_TRUE (file.exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Warning: Directory is actually a file, attempting to delete file...",
                        "Critical: Unable to delete file: " + pathOf (file),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product encountered errors and could not be removed." }));
}

TEST (ProductCleaner, FailsAListedFileThatCannotBeDeleted)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto file = folder.makeUndeletableFile ("folder/file");
    TestCleaner cleaner;
    cleaner.files.add (file);

    const auto result = cleaner.clean();

    EXPECT_TRUE (file.exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting file: " + pathOf (file),
                        "Critical: Unable to delete file: " + pathOf (file),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product encountered errors and could not be removed." }));
}

TEST (ProductCleaner, FailsAListedFileThatIsADirectoryThatCannotBeDeleted)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeUndeletableFile ("directory/file").getParentDirectory();
    TestCleaner cleaner;
    cleaner.files.add (directory);

    const auto result = cleaner.clean();

    EXPECT_TRUE (directory.exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Warning: File is actually a directory, attempting to delete recursively...",
                        "Critical: Unable to delete directory: " + pathOf (directory),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product encountered errors and could not be removed." }));
}

TEST (ProductCleaner, ReportsOneUndeletableFileDeepInATreeOnceAndRemovesTheRest)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto tree = folder.makeFolder ("tree");
    const auto undeletable = folder.makeUndeletableFile ("tree/m/inner/file");
    folder.makeFile ("tree/a/file");
    folder.makeFile ("tree/m/a");
    folder.makeFile ("tree/m/z");
    folder.makeFile ("tree/z/file");
    folder.makeFile ("tree/file");
    TestCleaner cleaner;
    cleaner.addDirectory (tree);

    const auto result = cleaner.clean();

    EXPECT_EQ (tree.findChildFiles (juce::File::findFiles, true), juce::Array<juce::File> (undeletable));
    EXPECT_FALSE (folder.getChildFile ("tree/a").exists());
    EXPECT_FALSE (folder.getChildFile ("tree/z").exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (tree),
                        "Critical: Unable to delete directory: " + pathOf (tree),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Product encountered errors and could not be removed." }));
}

TEST (ProductCleaner, TriesOnceToDeleteWhatCannotBeDeleted)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto listedAsItself = folder.makeUndeletableFile ("1/file");
    const auto listedAsADirectory = folder.makeUndeletableFile ("2/file");
    const auto inADirectory = folder.makeUndeletableFile ("3/file");
    const auto inADirectoryListedAsAFile = folder.makeUndeletableFile ("4/file");
    TestCleaner cleaner;
    cleaner.addDirectory (listedAsADirectory);
    cleaner.addDirectory (inADirectory.getParentDirectory());
    cleaner.files.add (listedAsItself);
    cleaner.files.add (inADirectoryListedAsAFile.getParentDirectory());

    const DeletionAttempts attempts;
    cleaner.clean();

    EXPECT_EQ (attempts.getPaths(),
               (Lines { pathOf (listedAsADirectory),
                        pathOf (inADirectory),
                        pathOf (inADirectory.getParentDirectory()),
                        pathOf (listedAsItself),
                        pathOf (inADirectoryListedAsAFile),
                        pathOf (inADirectoryListedAsAFile.getParentDirectory()) }));
}

TEST (ProductCleaner, CarriesOnAfterAFailureAndCallsTheProductPartiallyRemoved)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto undeletable = folder.makeUndeletableFile ("undeletable/file").getParentDirectory();
    const auto directory = folder.makeFolder ("directory");
    TestCleaner cleaner;
    cleaner.addDirectory (undeletable);
    cleaner.addDirectory (directory);

    const auto result = cleaner.clean();

    EXPECT_FALSE (directory.exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 1);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (undeletable),
                        "Critical: Unable to delete directory: " + pathOf (undeletable),
                        "Info: Deleting directory: " + pathOf (directory),
                        "Info: Directory deleted: " + pathOf (directory),
                        "Info: Directories removed: 1",
                        "Info: Files removed: 0",
                        "Warning: Product was partially removed, but encountered some errors." }));
}

TEST (ProductCleaner, CallsAProductPartiallyRemovedForASingleFileToo)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto undeletable = folder.makeUndeletableFile ("undeletable/file");
    const auto file = folder.makeFile ("file");
    TestCleaner cleaner;
    cleaner.files.add (undeletable);
    cleaner.files.add (file);

    const auto result = cleaner.clean();

    EXPECT_FALSE (file.exists());
    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 1);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting file: " + pathOf (undeletable),
                        "Critical: Unable to delete file: " + pathOf (undeletable),
                        "Info: Deleting file: " + pathOf (file),
                        "Info: File deleted: " + pathOf (file),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 1",
                        "Warning: Product was partially removed, but encountered some errors." }));
}

TEST (ProductCleaner, DoesNotTakeAFailureBackWhenALaterEntryGoes)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    TestCleaner cleaner;
    cleaner.addDirectory (folder.makeUndeletableFile ("undeletable/file").getParentDirectory());
    cleaner.addDirectory (folder.makeFolder ("directory"));
    cleaner.addDirectory (folder.makeFile ("file"));
    cleaner.files.add (folder.makeFile ("other file"));
    cleaner.files.add (folder.makeFolder ("other directory"));

    const auto result = cleaner.clean();

    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 2);
    EXPECT_EQ (result.filesRemoved, 2);
}

TEST (ProductCleaner, StopsBeforeAnyDeletionWhenTheFirstStepFails)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeFolder ("directory");
    const auto file = folder.makeFile ("file");
    TestCleaner cleaner;
    cleaner.addDirectory (directory);
    cleaner.files.add (file);
    bool afterWasCalled = false;
    cleaner.before = [] (CleanResult& result)
    {
        log (Warning, "This cannot go on.");
        result.success = false;
    };
    cleaner.after = [&] (CleanResult&) { afterWasCalled = true; };

    const auto result = cleaner.clean();

    EXPECT_TRUE (directory.exists());
    EXPECT_TRUE (file.exists());
    EXPECT_FALSE (afterWasCalled);
    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product", "Warning: This cannot go on.", "Warning: Cleaning was aborted." }));
}

TEST (ProductCleaner, ReturnsTheRecordAsTheFirstStepLeftIt)
{
    const RecordingLogger logger;
    TestCleaner cleaner;
    cleaner.before = [] (CleanResult& result) { result = { false, 3, 4 }; };

    const auto result = cleaner.clean();

    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 3);
    EXPECT_EQ (result.filesRemoved, 4);
}

TEST (ProductCleaner, GivesTheFirstStepAFreshRecordBeforeAnythingIsDeleted)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeFolder ("directory");
    TestCleaner cleaner;
    cleaner.addDirectory (directory);
    int calls = 0;
    cleaner.before = [&] (CleanResult& result)
    {
        ++calls;
        EXPECT_TRUE (directory.exists());
        EXPECT_TRUE (result.success);
        EXPECT_EQ (result.directoriesRemoved, 0);
        EXPECT_EQ (result.filesRemoved, 0);
        EXPECT_EQ (logger.lines, Lines { "Info: Cleaning: Product" });
    };

    cleaner.clean();

    EXPECT_EQ (calls, 1);
    EXPECT_FALSE (directory.exists());
}

TEST (ProductCleaner, RunsTheLastStepBetweenTheDeletionsAndTheTotals)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    const auto directory = folder.makeFolder ("directory");
    const auto file = folder.makeFile ("file");
    TestCleaner cleaner;
    cleaner.addDirectory (directory);
    cleaner.files.add (file);
    cleaner.after = [&] (CleanResult& result)
    {
        EXPECT_TRUE (result.success);
        EXPECT_EQ (result.directoriesRemoved, 1);
        EXPECT_EQ (result.filesRemoved, 1);
        log (Info, "The last step.");
    };

    cleaner.clean();

    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Deleting directory: " + pathOf (directory),
                        "Info: Directory deleted: " + pathOf (directory),
                        "Info: Deleting file: " + pathOf (file),
                        "Info: File deleted: " + pathOf (file),
                        "Info: The last step.",
                        "Info: Directories removed: 1",
                        "Info: Files removed: 1",
                        "Info: Product was successfully removed." }));
}

TEST (ProductCleaner, TellsAndReturnsWhatTheLastStepLeft)
{
    const RecordingLogger logger;
    TestCleaner cleaner;
    cleaner.after = [] (CleanResult& result) { result = { false, 12, 345 }; };

    const auto result = cleaner.clean();

    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 12);
    EXPECT_EQ (result.filesRemoved, 345);
    EXPECT_EQ (logger.lines,
               (Lines { "Info: Cleaning: Product",
                        "Info: Directories removed: 12",
                        "Info: Files removed: 345",
                        "Warning: Product was partially removed, but encountered some errors." }));
}

TEST (ProductCleaner, RunsTheLastStepAfterFailedDeletionsToo)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    TestCleaner cleaner;
    cleaner.files.add (folder.makeUndeletableFile ("folder/file"));
    int calls = 0;
    cleaner.after = [&] (CleanResult& result)
    {
        ++calls;
        EXPECT_FALSE (result.success);
    };

    cleaner.clean();

    EXPECT_EQ (calls, 1);
}

TEST (ProductCleaner, GoesByTheCountersOnlyWhereTheyAreAboveZero)
{
    struct Row
    {
        CleanResult result;
        std::string verdict;
    };

    const Row rows[] = {
        { { true, 0, 0 }, "Info: Product was successfully removed." },
        { { true, 5, 5 }, "Info: Product was successfully removed." },
        { { false, 1, 0 }, "Warning: Product was partially removed, but encountered some errors." },
        { { false, 0, 1 }, "Warning: Product was partially removed, but encountered some errors." },
        { { false, 0, 0 }, "Info: Product encountered errors and could not be removed." },
        { { false, -1, -1 }, "Info: Product encountered errors and could not be removed." },
    };

    for (const auto& row : rows)
    {
        const RecordingLogger logger;
        TestCleaner cleaner;
        cleaner.after = [&] (CleanResult& result) { result = row.result; };

        cleaner.clean();

        EXPECT_EQ (logger.lines.back(), row.verdict);
    }
}

TEST (ProductCleaner, AsksForItsNameOnce)
{
    struct Renamed : TestCleaner
    {
        juce::String getProductName() const override { return "Name " + juce::String (++calls); }
        mutable int calls = 0;
    };

    const RecordingLogger logger;
    Renamed cleaner;

    cleaner.clean();

    EXPECT_EQ (cleaner.calls, 1);
    EXPECT_EQ (logger.lines.front(), "Info: Cleaning: Name 1");
    EXPECT_EQ (logger.lines.back(), "Info: Name 1 was successfully removed.");
}

TEST (ProductCleaner, KeepsTheFirstOfEqualPaths)
{
    const TemporaryFolder folder;
    TestCleaner cleaner;

    cleaner.addDirectory (folder.getChildFile ("one"));
    cleaner.addDirectory (folder.getChildFile ("two"));
    cleaner.addDirectory (folder.getChildFile ("one"));
    cleaner.addDirectory (folder.getChildFile ("three"));
    cleaner.addDirectory (folder.getChildFile ("two"));

    EXPECT_EQ (cleaner.directories,
               juce::Array<juce::File> (
                   folder.getChildFile ("one"), folder.getChildFile ("two"), folder.getChildFile ("three")));
    EXPECT_TRUE (cleaner.files.isEmpty());
}

TEST (ProductCleaner, LeavesItsListsAsTheyAre)
{
    const RecordingLogger logger;
    const TemporaryFolder folder;
    TestCleaner cleaner;
    cleaner.addDirectory (folder.makeFolder ("directory"));
    cleaner.files.add (folder.makeFile ("file"));

    cleaner.clean();

    EXPECT_EQ (cleaner.directories, juce::Array<juce::File> (folder.getChildFile ("directory")));
    EXPECT_EQ (cleaner.files, juce::Array<juce::File> (folder.getChildFile ("file")));
}

TEST (ProductCleaner, WorksWithoutALogger)
{
    const RecordingLogger restoresTheLogger;
    const TemporaryFolder folder;
    TestCleaner cleaner;
    cleaner.addDirectory (folder.makeFolder ("directory"));
    cleaner.addDirectory (folder.makeUndeletableFile ("undeletable/file"));
    getLogger() = nullptr;

    const auto result = cleaner.clean();

    EXPECT_FALSE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 1);
}

TEST (CleanResult, StartsAsASuccessWithNothingRemoved)
{
    const CleanResult result;

    EXPECT_TRUE (result.success);
    EXPECT_EQ (result.directoriesRemoved, 0);
    EXPECT_EQ (result.filesRemoved, 0);
}
