#pragma once

#include "Protection.h"

#include <gtest/gtest.h>

#include <juce_core/juce_core.h>

/** A test that lets the program delete at the machine's real locations, or that changes the machine's
    list of installed programs. Refuses to run unless the environment says that nothing on this machine
    is worth keeping.
*/
class DisposableMachine : public testing::Test
{
protected:
    void SetUp() override
    {
        if (juce::SystemStats::getEnvironmentVariable ("ORVEX_MAY_CLEAN_THIS_MACHINE", {}) != "yes")
            FAIL() << "This test deletes below " << programFiles.getFullPathName() << ", "
                   << sharedData.getFullPathName() << " and " << userData.getFullPathName()
                   << ", or changes the list of installed programs. On Linux, run it in tests/shared/isolated. On a "
                   << "disposable Windows, set ORVEX_MAY_CLEAN_THIS_MACHINE=yes.";
    }

    ~DisposableMachine() override
    {
        for (const auto& file : made)
            deleteEvenIfProtected (file);
    }

    /** Makes a folder with a file in it, until the end of the test. */
    juce::File makeFolder (const juce::File& folder)
    {
        makeFile (folder.getChildFile ("file"));
        return folder;
    }

    /** Makes a small file and its parent folders, until the end of the test. */
    juce::File makeFile (const juce::File& file)
    {
        auto topmost = file;

        while (! topmost.getParentDirectory().exists())
            topmost = topmost.getParentDirectory();

        made.insert (0, topmost);
        file.create();
        file.appendText ("contents");
        return file;
    }

    /** Makes a folder that cannot be deleted, until the end of the test. */
    juce::File makeUndeletableFolder (const juce::File& folder)
    {
        makeFolder (folder);
        protectFromDeletion (folder.getChildFile ("file"));
        return folder;
    }

    const juce::File programFiles = juce::File::getSpecialLocation (juce::File::globalApplicationsDirectory);
    const juce::File sharedData = juce::File::getSpecialLocation (juce::File::commonApplicationDataDirectory);
    const juce::File userData = juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory);

private:
    juce::Array<juce::File> made;
};
