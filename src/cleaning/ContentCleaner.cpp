#include "ContentCleaner.h"

#include "BaseLocations.h"

namespace TessaraWorks
{

ContentCleaner::ContentCleaner()
{
    addDirectory (getSharedData().getChildFile ("TessaraWorks").getChildFile ("Content"));
}

juce::String ContentCleaner::getProductName() const { return "Velantone Content"; }

} // namespace TessaraWorks
