#pragma once

#include "../cleaning/CleanResult.h"

namespace TessaraWorks
{

/** A product as it is offered to the user. */
struct ProductOffer
{
    /** The question before the run. */
    const char* question;

    /** Builds the product's cleaner, runs it and destroys it. */
    CleanResult (*clean)();
};

extern const ProductOffer orvexStudioOffer;
extern const ProductOffer productManagerOffer;
extern const ProductOffer velantoneMediaServerOffer;
extern const ProductOffer contentOffer;
extern const ProductOffer companyOffer;

/** Asks the question and, only on a yes, runs the cleaner.

    @param result   receives the outcome of the run; unchanged after a no
*/
void offer (const ProductOffer& product, CleanResult& result);

} // namespace TessaraWorks
