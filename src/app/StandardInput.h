#pragma once

namespace TessaraWorks
{

/** Gives a process that was started without a standard input an empty one, and on Windows lets Ctrl+C
    end the process, whoever started it. Must be called before any file is opened.
*/
void prepareStandardInput();

} // namespace TessaraWorks
