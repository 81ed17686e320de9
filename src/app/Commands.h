#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** The program's commands. Starts without any. */
extern juce::ConsoleApplication consoleApplication;

/** Adds the commands to consoleApplication: help, version, the default one, which offers all products,
    and --clean. Help is added as the default as well, but the last default command counts.

    Deliberately, an unknown argument is never refused: it starts the default command.
*/
void registerCommands();

} // namespace TessaraWorks
