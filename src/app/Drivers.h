#pragma once

#include "../cleaning/CleanResult.h"

namespace TessaraWorks
{

// The drivers of the clean session: each offers one product. The result receives the outcome of the
// run, or stays as it is if the user said no.

void cleanOrvexStudio (CleanResult& result);
void cleanProductManager (CleanResult& result);
void cleanVelantoneMediaServer (CleanResult& result);
void cleanContent (CleanResult& result);

/** Deliberate: nothing calls it. The company's folders are removed by the clean-all sequence only. */
void cleanCompany (CleanResult& result);

} // namespace TessaraWorks
