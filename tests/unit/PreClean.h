#pragma once

#include "CleanResults.h"

/** Runs only the step of a cleaner before its deletions. */
template <typename Cleaner>
TessaraWorks::CleanResult preClean()
{
    struct Accessible : Cleaner
    {
        using Cleaner::preClean;
    };

    TessaraWorks::CleanResult result;
    Accessible().preClean (result);
    return result;
}

// Its possible results: it deletes nothing.
constexpr TessaraWorks::CleanResult goesOn { true, 0, 0 };
constexpr TessaraWorks::CleanResult stops { false, 0, 0 };
