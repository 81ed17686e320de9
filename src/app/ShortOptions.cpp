#include "ShortOptions.h"

namespace TessaraWorks
{

juce::ArgumentList withPlainShortOptions (const juce::ArgumentList& args)
{
    auto result = args;
    result.arguments.clear();

    for (const auto& argument : args.arguments)
    {
        if (! argument.isShortOption())
            result.arguments.add (argument);
        else if (argument.text.containsChar ('h'))
            result.arguments.add ({ "-h" });
        else if (argument.text.containsChar ('v'))
            result.arguments.add ({ "-v" });
    }

    return result;
}

} // namespace TessaraWorks
