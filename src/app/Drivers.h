#pragma once

#include "../cleaning/CleanResult.h"

namespace TessaraWorks
{

// The drivers of the clean session: each offers one product.
// The result receives the outcome of the run, or is left alone if the user said no.

void cleanOrvexStudio (CleanResult& result);
void cleanProductManager (CleanResult& result);
void cleanVelantoneMediaServer (CleanResult& result);
void cleanContent (CleanResult& result);

/** Deliberately called by nothing: the company's folders go in the clean-all sequence only. */
void cleanCompany (CleanResult& result);

} // namespace TessaraWorks
