#pragma once

#include "../cleaning/ProductCleaner.h"

namespace TessaraWorks
{

/** Removes the studio with its plug-ins, after running those of its uninstallers that are registered. */
class OrvexStudioCleaner : public ProductCleaner
{
public:
    OrvexStudioCleaner();

    juce::String getProductName() const override;

protected:
    void preClean (CleanResult& result) override;
};

} // namespace TessaraWorks
