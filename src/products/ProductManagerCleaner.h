#pragma once

#include "../cleaning/ProductCleaner.h"

namespace TessaraWorks
{

/** Removes the product manager, after running its own uninstaller if that is registered. */
class ProductManagerCleaner : public ProductCleaner
{
public:
    ProductManagerCleaner();

    juce::String getProductName() const override;

protected:
    void preClean (CleanResult& result) override;
};

} // namespace TessaraWorks
