#pragma once

#include <string>
#include <vector>

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
