#include "Shell.h"

namespace TessaraWorks
{

void initialiseShell() {}

} // namespace TessaraWorks
