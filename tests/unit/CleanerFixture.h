#pragma once

#include "CleanResults.h"
#include "RecordingLogger.h"
#include "TemporaryFolder.h"
#include "TestCleaner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

/** The whole outcome of a cleaner's run. */
struct Outcome
{
    TessaraWorks::CleanResult result;

    /** The logged lines. */
    Lines lines;

    /** The relative paths of the files, links and empty folders that remain, sorted. */
    Lines left;
};

inline bool operator== (const Outcome& a, const Outcome& b)
{
    return a.result == b.result && a.lines == b.lines && a.left == b.left;
}

inline std::ostream& operator<< (std::ostream& out, const Outcome& outcome)
{
    out << outcome.result;

    for (const auto& line : outcome.lines)
        out << "\n  " << line;

    for (const auto& path : outcome.left)
        out << "\n  left: " << path;

    return out;
}

/** A successful run, with the lines between its name and its totals, and the remaining paths. */
inline Outcome succeeded (int directories, int files, Lines lines, Lines left = {})
{
    lines.insert (lines.begin(), "Info: Cleaning: Product");
    lines.push_back ("Info: Directories removed: " + std::to_string (directories));
    lines.push_back ("Info: Files removed: " + std::to_string (files));
    lines.push_back ("Info: Product was successfully removed.");
    return { { true, directories, files }, lines, left };
}

/** A run that failed after it removed a listed entry. */
inline Outcome failedPartially (int directories, int files, const Lines& lines, const Lines& left)
{
    auto outcome = succeeded (directories, files, lines, left);
    outcome.result.success = false;
    outcome.lines.back() = "Warning: Product was partially removed, but encountered some errors.";
    return outcome;
}

/** A run that failed and removed no listed entry. */
inline Outcome failed (const Lines& lines, const Lines& left)
{
    auto outcome = failedPartially (0, 0, lines, left);
    outcome.lines.back() = "Info: Product encountered errors and could not be removed.";
    return outcome;
}

/** A test of a cleaner whose paths are in a temporary folder. */
class Cleaner : public testing::Test
{
protected:
    void listDirectories (const juce::StringArray& relativePaths)
    {
        for (const auto& path : relativePaths)
            cleaner.addDirectory (folder.getChildFile (path));
    }

    void listFiles (const juce::StringArray& relativePaths)
    {
        for (const auto& path : relativePaths)
            cleaner.files.add (folder.getChildFile (path));
    }

    Outcome clean()
    {
        const auto result = cleaner.clean();
        return { result, logger.lines, left() };
    }

    // The lines about a listed entry, by its relative path.

    Lines skipped (const juce::String& directory) const
    {
        return { "Debug: Skipping directory not found: " + path (directory) };
    }

    Lines directoryDeleted (const juce::String& directory) const
    {
        return { "Info: Deleting directory: " + path (directory), "Info: Directory deleted: " + path (directory) };
    }

    Lines directoryNotDeleted (const juce::String& directory) const
    {
        return { "Info: Deleting directory: " + path (directory),
                 "Critical: Unable to delete directory: " + path (directory) };
    }

    Lines fileDeleted (const juce::String& file) const
    {
        return { "Info: Deleting file: " + path (file), "Info: File deleted: " + path (file) };
    }

    Lines fileNotDeleted (const juce::String& file) const
    {
        return { "Info: Deleting file: " + path (file), "Critical: Unable to delete file: " + path (file) };
    }

    Lines deletedAsFile (const juce::String& directory) const
    {
        return { "Warning: Directory is actually a file, attempting to delete file...",
                 "Info: File deleted: " + path (directory) };
    }

    /** Returns the full path of an entry of the folder. */
    std::string path (const juce::String& relativePath) const { return pathOf (folder.getChildFile (relativePath)); }

    Lines left() const
    {
        const auto root = std::filesystem::u8path (pathOf (folder));
        Lines paths;

        for (const auto& entry : std::filesystem::recursive_directory_iterator (root))
            if (entry.is_symlink() || ! entry.is_directory() || is_empty (entry.path()))
                paths.push_back (entry.path().lexically_relative (root).generic_u8string());

        std::sort (paths.begin(), paths.end());
        return paths;
    }

    RecordingLogger logger;
    const TemporaryFolder folder;
    TestCleaner cleaner;
};
