#pragma once

#include <juce_core/juce_core.h>

#include <string>
#include <vector>

/** Records, while it lives, which files and folders the program asks the system to delete. */
class DeletionAttempts
{
public:
    DeletionAttempts();
    ~DeletionAttempts();

    JUCE_DECLARE_NON_COPYABLE (DeletionAttempts)

    /** Returns the path of each attempt, in order. */
    std::vector<std::string> getPaths() const;
};
