#pragma once

#include "ProductCleaner.h"

namespace TessaraWorks
{

/** Removes the shared content and playlist files. */
class ContentCleaner : public ProductCleaner
{
public:
    ContentCleaner();

    juce::String getProductName() const override;
};

} // namespace TessaraWorks
