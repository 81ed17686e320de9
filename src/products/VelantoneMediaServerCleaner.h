#pragma once

#include "../cleaning/ProductCleaner.h"

namespace TessaraWorks
{

/** Removes the media server and its player, without running an uninstaller first. */
class VelantoneMediaServerCleaner : public ProductCleaner
{
public:
    VelantoneMediaServerCleaner();

    juce::String getProductName() const override;
};

} // namespace TessaraWorks
