#include "Shell.h"

#include <objbase.h>

namespace TessaraWorks
{

void initialiseShell()
{
    // Never undone: the program is about to exit.
    [[maybe_unused]] const auto result = CoInitialize (nullptr);
}

} // namespace TessaraWorks
