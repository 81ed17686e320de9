#include "Drivers.h"

#include "ProductOffers.h"

namespace TessaraWorks
{

void cleanOrvexStudio (CleanResult& result) { offer (orvexStudioOffer, result); }
void cleanProductManager (CleanResult& result) { offer (productManagerOffer, result); }
void cleanVelantoneMediaServer (CleanResult& result) { offer (velantoneMediaServerOffer, result); }
void cleanContent (CleanResult& result) { offer (contentOffer, result); }
void cleanCompany (CleanResult& result) { offer (companyOffer, result); }

} // namespace TessaraWorks
