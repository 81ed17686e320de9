#pragma once

#include "../cleaning/ProductCleaner.h"

namespace TessaraWorks
{

/** Removes the studio with its plug-ins, after its own uninstallers have run. */
class OrvexStudioCleaner : public ProductCleaner
{
public:
    OrvexStudioCleaner();

    juce::String getProductName() const override;

protected:
    void preClean (CleanResult& result) override;
};

} // namespace TessaraWorks
