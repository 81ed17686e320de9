#pragma once

#include <juce_core/juce_core.h>

#include <functional>

/** Stands in for the system's mutexes while it lives. Only the mutexes of the thread that made it
    are concerned.
*/
class Mutexes
{
public:
    Mutexes();
    ~Mutexes();

    JUCE_DECLARE_NON_COPYABLE (Mutexes)

    /** Whether an attempt to lock one fails. */
    bool cannotBeLocked = false;

    /** The number that were locked so far, or tried to be. */
    int attempts = 0;

    /** Called, if set, right before one is destroyed. */
    std::function<void()> onDestruction;
};
