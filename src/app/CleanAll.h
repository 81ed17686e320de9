#pragma once

#include "../cleaning/CleanResult.h"

namespace TessaraWorks
{

/** The default command: starts the program's own dispatcher with "--clean=All".

    Deliberately drops the code that comes back, so that a failed run that was started in this way
    still exits with 0.
*/
void cleanAllCommand (const juce::ArgumentList& args);

/** Offers all products, one after the other, whatever becomes of those before.

    @param total    fails as soon as one run fails; its counters receive the sums of the runs, in
                    which the content's step deliberately counts what the studio's step removed
*/
void cleanAll (CleanResult& total);

} // namespace TessaraWorks
