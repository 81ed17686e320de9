#pragma once

#include <juce_core/juce_core.h>

#include <functional>

/** Watches, while it lives, the mutexes that its own thread uses, and can make them fail. */
class Mutexes
{
public:
    Mutexes();
    ~Mutexes();

    JUCE_DECLARE_NON_COPYABLE (Mutexes)

    /** Whether each attempt to lock one fails. */
    bool cannotBeLocked = false;

    /** The number of attempts to lock one so far. */
    int attempts = 0;

    /** Called, if set, right before one is destroyed. */
    std::function<void()> onDestruction;
};
