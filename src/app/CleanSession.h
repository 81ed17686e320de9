#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** The command --clean: one session against the target that the option names.

    Prints the banner, opens the log file on the desktop and lets the target offer its products. If a
    run failed, the session fails with advice for the user. Otherwise it reports success, waits for
    enter and shows the log file; it does so after a no to everything as well, which is deliberate. A
    missing or unknown target fails before anything is printed or opened.

    Fails through juce::ConsoleApplication::fail with the code 1.
*/
void cleanCommand (const juce::ArgumentList& args);

} // namespace TessaraWorks
