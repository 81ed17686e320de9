#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** Returns the arguments in a form in which JUCE matches the short options -h and -v.

    An argument of one leading dash asks for an option whose letter it contains, -h before -v, and
    becomes just that option. One that contains neither asks for nothing and goes. All other
    arguments stay as they are.

    JUCE 7.0 compares such an argument with the first digit of the letter's character code instead of
    the letter, so that -1 would be taken for -h and -xh would not. An argument that is the option's
    whole text it compares rightly.
*/
juce::ArgumentList withPlainShortOptions (const juce::ArgumentList& args);

} // namespace TessaraWorks
