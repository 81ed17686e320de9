#pragma once

namespace TessaraWorks
{

/** Gives a process that was started without a standard input an empty one. To be called before any
    file is opened.
*/
void provideStandardInput();

} // namespace TessaraWorks
