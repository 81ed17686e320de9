#pragma once

#include "Protection.h"

/** A new, empty folder that is deleted with its contents when this object is destroyed. */
class TemporaryFolder
{
public:
    TemporaryFolder() { folder.createDirectory(); }
    ~TemporaryFolder() { deleteEvenIfProtected (folder); }

    JUCE_DECLARE_NON_COPYABLE (TemporaryFolder)

    operator const juce::File&() const { return folder; }

    juce::String getFullPathName() const { return folder.getFullPathName(); }

    /** Returns a path below the folder, and makes nothing there. */
    juce::File getChildFile (const juce::String& relativePath) const { return folder.getChildFile (relativePath); }

    /** Makes a small file below the folder, and its parent folders. */
    juce::File makeFile (const juce::String& relativePath) const
    {
        const auto file = getChildFile (relativePath);
        file.create();
        file.appendText ("contents");
        return file;
    }

    /** Makes a file for each path, and a folder for one that ends in a slash. */
    void make (const juce::StringArray& relativePaths) const
    {
        for (const auto& path : relativePaths)
        {
            if (path.endsWithChar ('/'))
                makeFolder (path);
            else
                makeFile (path);
        }
    }

    /** Makes a folder below the folder. */
    juce::File makeFolder (const juce::String& relativePath) const
    {
        const auto made = getChildFile (relativePath);
        made.createDirectory();
        return made;
    }

    /** Makes a file below the folder that cannot be deleted, alone in a folder of its own. */
    juce::File makeUndeletableFile (const juce::String& relativePath) const
    {
        const auto file = makeFile (relativePath);
        protectFromDeletion (file);
        return file;
    }

private:
    const juce::File folder = juce::File::getSpecialLocation (juce::File::tempDirectory)
                                  .getNonexistentChildFile ("orvex-tests", {});
};
