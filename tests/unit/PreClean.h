#pragma once

#include "cleaning/CleanResult.h"

/** Does what a cleaner does before it deletes anything, and nothing more. */
template <typename Cleaner>
void preClean (TessaraWorks::CleanResult& result)
{
    struct Accessible : Cleaner
    {
        using Cleaner::preClean;
    };

    Accessible().preClean (result);
}
