#pragma once

#include "../cleaning/CleanResult.h"

namespace TessaraWorks
{

/** A value of --clean, and what it starts. */
struct Target
{
    /** The value of --clean. */
    const char* value;

    /** The first line that a session logs. */
    const char* firstLine;

    /** Offers the target's products. */
    void (*driver) (CleanResult&);
};

/** Returns the target that the first --clean among the arguments names, in exactly its letter case.

    Fails through juce::ConsoleApplication::fail if the value is missing or names no target.
*/
const Target& getTarget (const juce::ArgumentList& args);

} // namespace TessaraWorks
