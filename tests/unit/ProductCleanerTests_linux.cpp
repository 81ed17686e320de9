#include "CleanerFixture.h"
#include "DeletionAttempts_linux.h"
#include "FileAccess_linux.h"
#include "Mutexes_linux.h"

#include <sys/stat.h>

using namespace TessaraWorks;

TEST_F (Cleaner, CountsAListedDirectoryThatVanishesAfterTheFirstCheckAsAFile)
{
    const auto directory = folder.makeFolder ("directory");
    listDirectories ({ "directory" });

    const AfterFileAccess hook (directory, [&] { directory.deleteRecursively(); });

    EXPECT_EQ (clean(), succeeded (0, 1, deletedAsFile ("directory")));
}

TEST_F (Cleaner, LogsNothingForAListedFileThatVanishesAfterTheFirstCheck)
{
    const auto vanishing = folder.makeFile ("vanishing");
    folder.make ({ "staying" });
    listFiles ({ "vanishing", "staying" });

    const AfterFileAccess hook (vanishing, [&] { vanishing.deleteFile(); });

    EXPECT_EQ (clean(), succeeded (0, 1, fileDeleted ("staying")));
}

TEST_F (Cleaner, FailsATreeThatGrowsAfterItsListingAndLeavesTheNewFile)
{
    const auto inner = folder.makeFile ("tree/inner/file");
    listDirectories ({ "tree" });

    const AfterFileAccess hook (inner, [&] { folder.getChildFile ("tree/added").create(); });

    EXPECT_EQ (clean(), failed (directoryNotDeleted ("tree"), { "tree/added" }));
}

TEST_F (Cleaner, TriesEachUndeletableEntryOnce)
{
    for (const auto* file : { "1/file", "2/file", "3/file", "4/file" })
        folder.makeUndeletableFile (file);

    listDirectories ({ "1/file", "2" });
    listFiles ({ "3/file", "4" });

    const DeletionAttempts attempts;
    clean();

    EXPECT_EQ (attempts.getPaths(),
               (Lines { path ("1/file"), path ("2/file"), path ("2"), path ("3/file"), path ("4/file"), path ("4") }));
}

TEST_F (Cleaner, TakesNoLock)
{
    folder.make ({ "directory/file", "file" });
    listDirectories ({ "directory" });
    listFiles ({ "file" });

    const Mutexes mutexes;
    clean();

    EXPECT_EQ (mutexes.attempts, 0);
}

TEST_F (Cleaner, DistinguishesPathsThatDifferInCase)
{
    listDirectories ({ "product", "Product" });

    EXPECT_EQ (cleaner.directories.size(), 2);
}

TEST_F (Cleaner, RemovesAListedLinkToAFileAndKeepsTheFile)
{
    folder.makeFile ("target").createSymbolicLink (folder.getChildFile ("link"), false);
    listDirectories ({ "link" });

    EXPECT_EQ (clean(), succeeded (0, 1, deletedAsFile ("link"), { "target" }));
}

TEST_F (Cleaner, SkipsAListedLinkThatPointsNowhere)
{
    folder.getChildFile ("missing").createSymbolicLink (folder.getChildFile ("link"), false);
    listDirectories ({ "link" });

    EXPECT_EQ (clean(), succeeded (0, 0, skipped ("link"), { "link" }));
}

TEST_F (Cleaner, SkipsAnEntryInAnUnreadableFolder)
{
    folder.make ({ "closed/directory/" });
    listDirectories ({ "closed/directory" });
    chmod (path ("closed").c_str(), 0);
    cleaner.after = [&] (const CleanResult&) { chmod (path ("closed").c_str(), 0700); };

    EXPECT_EQ (clean(), succeeded (0, 0, skipped ("closed/directory"), { "closed/directory" }));
}
