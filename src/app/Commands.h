#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** The program's commands. Starts without any. */
extern juce::ConsoleApplication consoleApplication;

/** Adds the program's own commands to consoleApplication: the default one, which offers all
    products, and --clean. The last default command added counts, so they go behind help and version.

    Deliberately, an unknown argument is never refused: it starts the default command.
*/
void registerCommands();

} // namespace TessaraWorks
