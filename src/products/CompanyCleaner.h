#pragma once

#include "../cleaning/ProductCleaner.h"

namespace TessaraWorks
{

/** Removes the folders that all of the maker's products share. */
class CompanyCleaner : public ProductCleaner
{
public:
    CompanyCleaner();

    juce::String getProductName() const override;
};

} // namespace TessaraWorks
