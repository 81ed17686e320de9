#pragma once

namespace TessaraWorks
{

/** Returns whether the process runs with administrator rights. If that cannot be found out, it does not. */
bool isProcessElevated();

} // namespace TessaraWorks
