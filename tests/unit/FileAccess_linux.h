#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <string>
#include <vector>

/** Calls a function while it lives: once, right after the program first asked the system whether a
    file exists, and before it learns the answer.
*/
class AfterFileAccess
{
public:
    AfterFileAccess (const juce::File& file, std::function<void()> function);
    ~AfterFileAccess();

    AfterFileAccess (const AfterFileAccess&) = delete;
    AfterFileAccess& operator= (const AfterFileAccess&) = delete;
};

/** Notes, while it lives, which files and folders the program asks the system to delete. */
class DeletionAttempts
{
public:
    DeletionAttempts();
    ~DeletionAttempts();

    DeletionAttempts (const DeletionAttempts&) = delete;
    DeletionAttempts& operator= (const DeletionAttempts&) = delete;

    /** Returns the path of each attempt, in order. */
    std::vector<std::string> getPaths() const;
};
