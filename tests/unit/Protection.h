#pragma once

#include <juce_core/juce_core.h>

/** Keeps a file from being deleted. Windows checks the file's own attribute, Linux the permissions of
    its folder, so the file should be alone there.
*/
inline void protectFromDeletion (const juce::File& file)
{
    file.setReadOnly (true);
    file.getParentDirectory().setReadOnly (true);
}

/** Deletes a file, or a folder with its contents, even if they are protected. */
inline void deleteEvenIfProtected (const juce::File& file)
{
    file.getParentDirectory().setReadOnly (false);
    file.setReadOnly (false);

    for (const auto& child : file.findChildFiles (juce::File::findFilesAndDirectories, true))
        child.setReadOnly (false);

    file.deleteRecursively();
}
