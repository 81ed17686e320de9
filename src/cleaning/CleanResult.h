#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** The outcome of a run. */
struct CleanResult
{
    /** False once a deletion has failed, or once the step before the deletions has stopped the run. */
    bool success = true;

    /** The list entries that were removed as directories. A whole tree counts as one. */
    juce::int32 directoriesRemoved = 0;

    /** The list entries that were removed as single files. Files inside a tree do not count. */
    juce::int32 filesRemoved = 0;
};

} // namespace TessaraWorks
