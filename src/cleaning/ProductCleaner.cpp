#include "ProductCleaner.h"

#include "../logging/Log.h"

namespace TessaraWorks
{

static void deleteAsDirectory (const juce::File& directory, CleanResult& result)
{
    const auto& path = directory.getFullPathName();

    if (directory.deleteRecursively (false))
    {
        log (Info, "Directory deleted: " + path);
        ++result.directoriesRemoved;
    }
    else
    {
        log (Critical, "Unable to delete directory: " + path);
        result.success = false;
    }
}

static void deleteAsFile (const juce::File& file, CleanResult& result)
{
    const auto& path = file.getFullPathName();

    if (file.deleteFile())
    {
        log (Info, "File deleted: " + path);
        ++result.filesRemoved;
    }
    else
    {
        log (Critical, "Unable to delete file: " + path);
        result.success = false;
    }
}

static void removeListedDirectory (const juce::File& directory, CleanResult& result)
{
    const auto& path = directory.getFullPathName();

    if (! directory.exists())
    {
        log (Debug, "Skipping directory not found: " + path);
    }
    else if (directory.isDirectory())
    {
        log (Info, "Deleting directory: " + path);
        deleteAsDirectory (directory, result);
    }
    else
    {
        log (Warning, "Directory is actually a file, attempting to delete file...");
        deleteAsFile (directory, result);
    }
}

// Deliberate: differs from a listed directory. A file is announced before its deletion, and an entry
// that vanishes between the tests is skipped in silence, where a listed directory counts as a deleted file.
static void removeListedFile (const juce::File& file, CleanResult& result)
{
    const auto& path = file.getFullPathName();

    if (! file.exists())
    {
        log (Debug, "Skipping file not found: " + path);
    }
    else if (file.existsAsFile())
    {
        log (Info, "Deleting file: " + path);
        deleteAsFile (file, result);
    }
    else if (file.isDirectory())
    {
        log (Warning, "File is actually a directory, attempting to delete recursively...");
        deleteAsDirectory (file, result);
    }
}

static void logVerdict (const juce::String& name, const CleanResult& result)
{
    if (result.success)
        log (Info, name + " was successfully removed.");
    else if (result.directoriesRemoved > 0 || result.filesRemoved > 0)
        log (Warning, name + " was partially removed, but encountered some errors.");
    else
        log (Info, name + " encountered errors and could not be removed."); // deliberate: below the partial one
}

CleanResult ProductCleaner::clean()
{
    CleanResult result;
    const auto name = getProductName();

    log (Info, "Cleaning: " + name);
    preClean (result);

    if (! result.success)
    {
        log (Warning, "Cleaning was aborted.");
        return result;
    }

    for (const auto& directory : directories)
        removeListedDirectory (directory, result);

    for (const auto& file : files)
        removeListedFile (file, result);

    postClean (result);

    log (Info, "Directories removed: " + juce::String (result.directoriesRemoved));
    log (Info, "Files removed: " + juce::String (result.filesRemoved));
    logVerdict (name, result);

    return result;
}

void ProductCleaner::preClean (CleanResult&) {}
void ProductCleaner::postClean (CleanResult&) {}

void ProductCleaner::addDirectory (const juce::File& directory) { directories.addIfNotAlreadyThere (directory); }

void ProductCleaner::addDirectories (std::initializer_list<TablePath> table)
{
    for (const auto& path : table)
        addDirectory (path.location.getChildFile (path.child));
}

} // namespace TessaraWorks
