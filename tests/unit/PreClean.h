#pragma once

#include "CleanResults.h"

/** Does what a cleaner does before it deletes anything, and nothing more. */
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

// What comes of it, since it deletes nothing.
constexpr TessaraWorks::CleanResult goesOn { true, 0, 0 };
constexpr TessaraWorks::CleanResult stops { false, 0, 0 };
