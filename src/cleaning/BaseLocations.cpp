#include "BaseLocations.h"

namespace TessaraWorks
{

juce::File getSharedData() { return juce::File::getSpecialLocation (juce::File::commonApplicationDataDirectory); }

juce::File getProgramFiles() { return juce::File::getSpecialLocation (juce::File::globalApplicationsDirectory); }

juce::File getUserData() { return juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory); }

} // namespace TessaraWorks
