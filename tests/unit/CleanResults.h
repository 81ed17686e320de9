#pragma once

#include "cleaning/CleanResult.h"

#include <ostream>

// Lets a test compare and print whole results.

namespace TessaraWorks
{

inline bool operator== (const CleanResult& a, const CleanResult& b)
{
    return a.success == b.success && a.directoriesRemoved == b.directoriesRemoved && a.filesRemoved == b.filesRemoved;
}

inline std::ostream& operator<< (std::ostream& out, const CleanResult& result)
{
    return out << (result.success ? "success" : "failure") << ", directories removed: " << result.directoriesRemoved
               << ", files removed: " << result.filesRemoved;
}

} // namespace TessaraWorks
