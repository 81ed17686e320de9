#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** Returns the arguments in a form in which JUCE matches the short options -h and -v.

    An argument with one leading dash asks for the option whose letter it contains, -h before -v, and
    is replaced by that option. One that contains neither letter asks for nothing and is left out. All
    other arguments stay as they are.

    JUCE 7.0 looks for the first digit of the letter's character code in such an argument, not for the
    letter: it takes -1 for -h, and does not recognise -xh. It does recognise the exact option.
*/
juce::ArgumentList withPlainShortOptions (const juce::ArgumentList& args);

} // namespace TessaraWorks
