#pragma once

#include <juce_core/juce_core.h>

#include <functional>

/** Calls a function while it lives: once, right after the program first asked the system whether a
    file exists, and before it learns the answer.
*/
class AfterFileAccess
{
public:
    AfterFileAccess (const juce::File& file, std::function<void()> function);
    ~AfterFileAccess();

    JUCE_DECLARE_NON_COPYABLE (AfterFileAccess)
};
