#pragma once

#include "app/Commands.h"

/** Fills the program's list of commands as its main function does. That main really does so is for
    the tests of the whole program to show: the texts that help and version print are not these.
*/
inline void addAllCommands()
{
    TessaraWorks::consoleApplication.addHelpCommand ("--help|-h", "", true);
    TessaraWorks::consoleApplication.addVersionCommand ("--version|-v", "");
    TessaraWorks::registerCommands();
}
