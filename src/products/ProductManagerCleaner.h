#pragma once

#include "../cleaning/ProductCleaner.h"

namespace TessaraWorks
{

/** Removes the product manager, after its own uninstaller has run. */
class ProductManagerCleaner : public ProductCleaner
{
public:
    ProductManagerCleaner();

    juce::String getProductName() const override;

protected:
    void preClean (CleanResult& result) override;
};

} // namespace TessaraWorks
