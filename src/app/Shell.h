#pragma once

namespace TessaraWorks
{

/** Prepares the calling thread for showing a file in the system's shell. A failure is ignored. */
void initialiseShell();

} // namespace TessaraWorks
