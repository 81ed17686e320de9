#pragma once

#include <string>

namespace TessaraWorks
{

/** Reads a line from std::cin as std::getline does.

    On Windows, Ctrl+C in a console ends the read like the end of the input, a moment before it ends the
    process. So a read from a console that ends without a line end returns only after 3 seconds. If the
    console itself has gone by then, nobody is there to say yes: the line is "n", also in each later call.

    @param line     receives the line without its line end; otherwise left alone if std::cin has failed before
*/
void readAnswer (std::string& line);

} // namespace TessaraWorks
