#include "StandardInput.h"

#include <windows.h>

namespace TessaraWorks
{

// Without a standard input, each read fails: there is nothing to provide.
void prepareStandardInput()
{
    // A process inherits that Ctrl+C is ignored. A read that it ends would be the end of the input, a yes.
    SetConsoleCtrlHandler (nullptr, FALSE);
}

} // namespace TessaraWorks
