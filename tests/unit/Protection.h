#pragma once

#include <juce_core/juce_core.h>

/** Keeps a file from being deleted. Windows goes by the file's own attribute, Linux by the
    permissions of the folder around it, so the file should be alone in its folder.
*/
inline void protectFromDeletion (const juce::File& file)
{
    file.setReadOnly (true);
    file.getParentDirectory().setReadOnly (true);
}

/** Deletes a file, or a folder with all that it holds, whatever is protected in it. */
inline void deleteEvenIfProtected (const juce::File& file)
{
    file.getParentDirectory().setReadOnly (false);
    file.setReadOnly (false);

    for (const auto& child : file.findChildFiles (juce::File::findFilesAndDirectories, true))
        child.setReadOnly (false);

    file.deleteRecursively();
}
