#include "Targets.h"

#include "CleanAll.h"
#include "Drivers.h"

#include <algorithm>
#include <iterator>

namespace TessaraWorks
{

static const Target targets[] = {
    { "OrvexStudio", "Target: Orvex Studio", cleanOrvexStudio },
    { "ProductManager", "Target: Orvex Product Manager", cleanProductManager },
    { "VelantoneMediaServer", "Target: Velantone Media Server", cleanVelantoneMediaServer },
    { "Content", "Target: Content", cleanContent },
    { "All", "Target: All", cleanAll },
};

const Target& getTarget (const juce::ArgumentList& args)
{
    const auto value = args.getValueForOption ("--clean");

    if (value.isEmpty())
        juce::ConsoleApplication::fail ("Missing --clean argument");

    const auto isAskedFor = [&] (const Target& target) { return value == target.value; };
    const auto target = std::find_if (std::begin (targets), std::end (targets), isAskedFor);

    if (target == std::end (targets))
    {
        juce::StringArray values;

        for (const auto& t : targets)
            values.add (t.value);

        juce::ConsoleApplication::fail ("Invalid --clean target: " + value
                                        + ". Valid targets are: " + values.joinIntoString (", "));
    }

    return *target;
}

} // namespace TessaraWorks
