#pragma once

#include "../cleaning/CleanResult.h"

namespace TessaraWorks
{

/** Offers all products, one after the other, whatever becomes of those before.

    @param total    fails as soon as one run fails; its counters receive the sums of the runs, in
                    which the content's step adds the counts of the studio's step once more
*/
void cleanAll (CleanResult& total);

} // namespace TessaraWorks
