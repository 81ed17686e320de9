#include "Elevation.h"

#include <unistd.h>

namespace TessaraWorks
{

bool isProcessElevated() { return geteuid() == 0; }

} // namespace TessaraWorks
