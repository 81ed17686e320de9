#pragma once

#include "ProductOffers.h"

namespace TessaraWorks
{

// The drivers of the clean session: each offers one product. The result receives the outcome of the
// run, or stays as it is if the user said no.

inline void cleanOrvexStudio (CleanResult& result) { offer (orvexStudioOffer, result); }
inline void cleanProductManager (CleanResult& result) { offer (productManagerOffer, result); }
inline void cleanVelantoneMediaServer (CleanResult& result) { offer (velantoneMediaServerOffer, result); }
inline void cleanContent (CleanResult& result) { offer (contentOffer, result); }

/** Deliberate: nothing calls it. The company's folders are removed by the clean-all sequence only. */
inline void cleanCompany (CleanResult& result) { offer (companyOffer, result); }

} // namespace TessaraWorks
