#pragma once

#include "app/Commands.h"

/** Adds the program's commands in the order of its main function, with other strings for help and
    version. The tests of the whole program show that the main function adds them.
*/
inline void addAllCommands()
{
    TessaraWorks::consoleApplication.addHelpCommand ("--help|-h", "", true);
    TessaraWorks::consoleApplication.addVersionCommand ("--version|-v", "");
    TessaraWorks::registerCommands();
}
