#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** The program's commands. Starts without any. */
extern juce::ConsoleApplication consoleApplication;

/** Adds the commands that clean to consoleApplication: the default one, which offers all products, and
    --clean. The default command that was added last is the one that counts, so help must be added before.

    Deliberate: an unknown argument is never refused, it starts the default command.
*/
void registerCommands();

/** The default command: starts the program's own dispatcher with "--clean=All".

    Deliberate: it drops the returned code, so that a failed run that was started in this way exits with 0.
*/
void cleanAllCommand (const juce::ArgumentList& args);

} // namespace TessaraWorks
