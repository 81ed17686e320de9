#pragma once

#include <juce_core/juce_core.h>

#include <functional>

/** Calls a function once while it lives: after the program first asks the system whether a file
    exists, and before it gets the answer.
*/
class AfterFileAccess
{
public:
    AfterFileAccess (const juce::File& file, std::function<void()> function);
    ~AfterFileAccess();

    JUCE_DECLARE_NON_COPYABLE (AfterFileAccess)
};
