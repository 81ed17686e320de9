#pragma once

#include <juce_core/juce_core.h>

/** A new, empty folder that goes with all it holds when this object does. */
class TemporaryFolder : public juce::File
{
public:
    TemporaryFolder()
        : juce::File (getSpecialLocation (tempDirectory).getNonexistentChildFile ("orvex-tests", {}))
    {
        createDirectory();
    }

    ~TemporaryFolder()
    {
        for (const auto& child : findChildFiles (findFilesAndDirectories, true))
            child.setReadOnly (false);

        setReadOnly (false, true);
        deleteRecursively();
    }

    TemporaryFolder (const TemporaryFolder&) = delete;
    TemporaryFolder& operator= (const TemporaryFolder&) = delete;

    /** Makes a small file below the folder, and the folders that it lies in. */
    juce::File makeFile (const juce::String& relativePath) const
    {
        const auto file = getChildFile (relativePath);
        file.create();
        file.appendText ("contents");
        return file;
    }

    /** Makes a folder below the folder. */
    juce::File makeFolder (const juce::String& relativePath) const
    {
        const auto folder = getChildFile (relativePath);
        folder.createDirectory();
        return folder;
    }
};
