#include "CleanerFixture.h"

using namespace TessaraWorks;

TEST (CleanResult, StartsAsASuccessWithNothingRemoved) { EXPECT_EQ (CleanResult(), (CleanResult { true, 0, 0 })); }

TEST_F (Cleaner, SkipsMissingEntriesAndSucceeds)
{
    listDirectories ({ "one", "missing/two" });
    listFiles ({ "three" });
    cleaner.addDirectory (juce::File());
    cleaner.files.add (juce::File());

    EXPECT_EQ (clean(),
               succeeded (0,
                          0,
                          { "Debug: Skipping directory not found: " + path ("one"),
                            "Debug: Skipping directory not found: " + path ("missing/two"),
                            "Debug: Skipping directory not found: ",
                            "Debug: Skipping file not found: " + path ("three"),
                            "Debug: Skipping file not found: " }));
}

TEST_F (Cleaner, RemovesAListedDirectoryWithItsContentsAndCountsItOnce)
{
    folder.make ({ "tree/file", "tree/inner/deep/file", "tree/inner/deep/other file", "tree/empty/", "tree2/file" });
    listDirectories ({ "tree" });

    EXPECT_EQ (clean(), succeeded (1, 0, directoryDeleted ("tree"), { "tree2/file" }));
}

TEST_F (Cleaner, AnnouncesADirectoryBeforeItIsDeleted)
{
    const auto directory = folder.makeFolder ("directory");
    listDirectories ({ "directory" });

    std::vector<bool> wasThere;
    logger.onLine = [&] (const std::string&) { wasThere.push_back (directory.exists()); };
    clean();

    EXPECT_EQ (logger.lines[1], "Info: Deleting directory: " + path ("directory"));
    EXPECT_EQ (wasThere, (std::vector<bool> { true, true, false, false, false, false }));
}

TEST_F (Cleaner, CountsAListedDirectoryThatVanishesAfterTheChecksAsAFile)
{
    const auto file = folder.makeFile ("file");
    listDirectories ({ "file" });

    logger.onLine = [&] (const std::string& line)
    {
        if (line == "Warning: Directory is actually a file, attempting to delete file...")
            file.deleteFile();
    };

    EXPECT_EQ (clean(), succeeded (0, 1, deletedAsFile ("file")));
}

TEST_F (Cleaner, DeletesDirectoriesThenFilesInOrderEachByItsActualKind)
{
    folder.make ({ "z/", "a", "y", "b/" });
    listFiles ({ "y", "b" });
    listDirectories ({ "z", "a" });

    EXPECT_EQ (clean(),
               succeeded (2,
                          2,
                          directoryDeleted ("z") + deletedAsFile ("a") + fileDeleted ("y")
                              + Lines { "Warning: File is actually a directory, attempting to delete recursively...",
                                        "Info: Directory deleted: " + path ("b") }));
}

TEST_F (Cleaner, RemovesEntriesAndContentsOfAnyName)
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
    Lines lines;

    for (const auto* utf8 : names)
    {
        const auto name = juce::String::fromUTF8 (utf8);
        folder.make ({ name + "/" + name + "/" + name, name + "/" + name + "/file" });
        listDirectories ({ name });
        lines = lines + directoryDeleted (name);
    }

    ASSERT_EQ (left().size(), 18u);
    EXPECT_EQ (clean(), succeeded (9, 0, lines));
}

TEST_F (Cleaner, FailsWhenAnyEntryCannotBeDeleted)
{
    const auto file = folder.makeUndeletableFile ("folder/file");
    const auto directory = file.getParentDirectory();

    TestCleaner cleaners[4];
    cleaners[0].addDirectory (directory);
    cleaners[1].addDirectory (file);
    cleaners[2].files.add (directory);
    cleaners[3].files.add (file);

    for (auto& one : cleaners)
        EXPECT_EQ (one.clean(), (CleanResult { false, 0, 0 }));
}

TEST_F (Cleaner, CarriesOnAfterEachFailureButStillFails)
{
    for (const auto* file : { "1/inner/file", "2/file", "3/file", "4/inner/file" })
        folder.makeUndeletableFile (file);

    folder.make ({ "1/a", "1/z", "directory/inner/file", "file", "other file", "other directory/inner/file" });
    listDirectories ({ "1", "directory", "2/file", "file" });
    listFiles ({ "3/file", "other file", "4", "other directory" });

    EXPECT_EQ (
        clean(),
        failedPartially (2,
                         2,
                         directoryNotDeleted ("1") + directoryDeleted ("directory")
                             + Lines { "Warning: Directory is actually a file, attempting to delete file...",
                                       "Critical: Unable to delete file: " + path ("2/file") }
                             + deletedAsFile ("file") + fileNotDeleted ("3/file") + fileDeleted ("other file")
                             + Lines { "Warning: File is actually a directory, attempting to delete recursively...",
                                       "Critical: Unable to delete directory: " + path ("4"),
                                       "Warning: File is actually a directory, attempting to delete recursively...",
                                       "Info: Directory deleted: " + path ("other directory") },
                         { "1/inner/file", "2/file", "3/file", "4/inner/file" }));
}

TEST_F (Cleaner, RunsTheFirstStepWithAFreshResultBeforeAnyDeletion)
{
    folder.make ({ "directory/" });
    listDirectories ({ "directory" });
    cleaner.before = [&] (const CleanResult& result)
    {
        log (Info, "The first step.");
        EXPECT_EQ (result, CleanResult());
        EXPECT_EQ (left(), Lines { "directory" });
    };

    EXPECT_EQ (clean(), succeeded (1, 0, Lines { "Info: The first step." } + directoryDeleted ("directory")));
}

TEST_F (Cleaner, StopsBeforeAnyDeletionWhenTheFirstStepFailsAndReturnsItsResult)
{
    folder.make ({ "directory/", "file" });
    listDirectories ({ "directory" });
    listFiles ({ "file" });
    cleaner.before = [] (CleanResult& result)
    {
        log (Warning, "This cannot go on.");
        result = { false, 3, 4 };
    };
    cleaner.after = [] (const CleanResult&) { log (Info, "The last step."); };

    EXPECT_EQ (
        clean(),
        (Outcome { { false, 3, 4 },
                   { "Info: Cleaning: Product", "Warning: This cannot go on.", "Warning: Cleaning was aborted." },
                   { "directory", "file" } }));
}

TEST_F (Cleaner, RunsTheLastStepBetweenDeletionsAndTotalsEvenAfterAFailure)
{
    folder.makeUndeletableFile ("folder/file");
    folder.make ({ "directory/" });
    listDirectories ({ "directory" });
    listFiles ({ "folder/file" });
    cleaner.after = [] (const CleanResult& result)
    {
        EXPECT_EQ (result, (CleanResult { false, 1, 0 }));
        log (Info, "The last step.");
    };

    EXPECT_EQ (clean(),
               failedPartially (1,
                                0,
                                directoryDeleted ("directory") + fileNotDeleted ("folder/file")
                                    + Lines { "Info: The last step." },
                                { "folder/file" }));
}

TEST_F (Cleaner, GivesItsVerdictOnTheResultOfTheLastStepAndReturnsIt)
{
    const auto successfully = "Info: Product was successfully removed.";
    const auto partially = "Warning: Product was partially removed, but encountered some errors.";
    const auto notAtAll = "Info: Product encountered errors and could not be removed.";

    struct Row
    {
        CleanResult result;
        std::string verdict;
    };

    const Row rows[] = {
        { { true, 0, 0 }, successfully }, { { true, 12, 345 }, successfully }, { { false, 1, 0 }, partially },
        { { false, 0, 1 }, partially },   { { false, 0, 0 }, notAtAll },       { { false, -1, -1 }, notAtAll },
    };

    for (const auto& row : rows)
    {
        cleaner.after = [&] (CleanResult& result) { result = row.result; };
        logger.lines.clear();

        EXPECT_EQ (clean(),
                   (Outcome { row.result,
                              { "Info: Cleaning: Product",
                                "Info: Directories removed: " + std::to_string (row.result.directoriesRemoved),
                                "Info: Files removed: " + std::to_string (row.result.filesRemoved),
                                row.verdict },
                              {} }));
    }
}

TEST_F (Cleaner, AsksForItsNameOnce)
{
    struct Renamed : TestCleaner
    {
        juce::String getProductName() const override { return "Name " + juce::String (++calls); }
        mutable int calls = 0;
    };

    Renamed renamed;

    renamed.clean();

    EXPECT_EQ (renamed.calls, 1);
    EXPECT_EQ (logger.lines.front(), "Info: Cleaning: Name 1");
    EXPECT_EQ (logger.lines.back(), "Info: Name 1 was successfully removed.");
}

TEST_F (Cleaner, KeepsTheFirstOfEqualPaths)
{
    listDirectories ({ "one", "two", "one", "three", "two" });

    EXPECT_EQ (cleaner.directories,
               juce::Array<juce::File> (
                   folder.getChildFile ("one"), folder.getChildFile ("two"), folder.getChildFile ("three")));
    EXPECT_TRUE (cleaner.files.isEmpty());
}

TEST_F (Cleaner, LeavesItsListsUnchanged)
{
    folder.make ({ "directory/", "file" });
    listDirectories ({ "directory" });
    listFiles ({ "file" });

    clean();

    EXPECT_EQ (cleaner.directories, juce::Array<juce::File> (folder.getChildFile ("directory")));
    EXPECT_EQ (cleaner.files, juce::Array<juce::File> (folder.getChildFile ("file")));
}
