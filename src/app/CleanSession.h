#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** The command --clean: one session against the target that the option names.

    Prints the banner, opens the log file on the desktop, lets the target offer its products, and
    ends either by waiting for enter and showing the log file, or by failing with advice for the
    user. A missing or unknown target fails before anything is printed or opened.

    Fails through juce::ConsoleApplication::fail with the code 1.
*/
void cleanCommand (const juce::ArgumentList& args);

} // namespace TessaraWorks
