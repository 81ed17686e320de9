#pragma once

namespace TessaraWorks
{

/** Returns whether the process runs with administrator rights. If that cannot be determined, the answer is no. */
bool isProcessElevated();

} // namespace TessaraWorks
