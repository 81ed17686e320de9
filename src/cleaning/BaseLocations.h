#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

// The locations below which all products keep their files. Each is the empty juce::File if the
// system does not know it.

/** Returns the folder of data that all users share, such as C:\ProgramData. */
juce::File getSharedData();

/** Returns the folder of installed programs, such as C:\Program Files. */
juce::File getProgramFiles();

/** Returns the roaming data folder of the account that the process runs as. */
juce::File getUserData();

} // namespace TessaraWorks
