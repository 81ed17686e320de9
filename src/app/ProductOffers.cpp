#include "ProductOffers.h"

#include "../cleaning/ConfirmWithUser.h"
#include "../cleaning/ContentCleaner.h"
#include "../logging/Log.h"
#include "../products/CompanyCleaner.h"
#include "../products/OrvexStudioCleaner.h"
#include "../products/ProductManagerCleaner.h"
#include "../products/VelantoneMediaServerCleaner.h"

namespace TessaraWorks
{

template <typename Cleaner>
static CleanResult cleanWith()
{
    Cleaner cleaner;
    return cleaner.clean();
}

const ProductOffer orvexStudioOffer { "Remove Orvex Studio and all of its associated files?",
                                      cleanWith<OrvexStudioCleaner> };

const ProductOffer productManagerOffer { "Remove Orvex Product Manager and all of its associated files?",
                                         cleanWith<ProductManagerCleaner> };

const ProductOffer velantoneMediaServerOffer { "Remove Velantone Media Server and all of its associated files?",
                                               cleanWith<VelantoneMediaServerCleaner> };

const ProductOffer contentOffer { "Remove all Velantone content & playlist files?", cleanWith<ContentCleaner> };

const ProductOffer companyOffer { "Remove all Tessara Works global directories and files?", cleanWith<CompanyCleaner> };

void offer (const ProductOffer& product, CleanResult& result)
{
    log (Info, product.question);

    if (confirmWithUser())
        result = product.clean();
}

} // namespace TessaraWorks
