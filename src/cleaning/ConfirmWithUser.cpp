#include "ConfirmWithUser.h"

#include "../logging/Log.h"
#include "ReadAnswer.h"

#include <iostream>
#include <limits>
#include <string>

namespace TessaraWorks
{

// Guards against two habits of JUCE. It ends a string at a byte such as 80 where a character should begin,
// so that a line of it would be a yes, but copies the bytes after it as well, past the end of its memory.
// And Windows' 16-bit towlower makes y of U+10059, and nothing of U+10000.
static bool isAscii (const std::string& line)
{
    return juce::CharPointer_ASCII::isValidString (line.c_str(), std::numeric_limits<int>::max());
}

bool confirmWithUser()
{
    // Outlives the repetitions: a read after the end of the input leaves the line as it was.
    std::string line;

    for (;;)
    {
        std::cout << "Y/n? " << std::flush;
        readAnswer (line);

        // In code page 65001, Windows' console sends a NUL for each character beyond ASCII: a line of them
        // is not empty, and so not a yes.
        if (line.find ('\0') != std::string::npos || ! isAscii (line))
            continue;

        const auto answer = juce::String::fromUTF8 (line.c_str()).toLowerCase();

        if (answer.isEmpty() || answer == "y")
            return true;

        if (answer == "n")
        {
            log (Info, "Cleaning cancelled by the user.");
            return false;
        }
    }
}

} // namespace TessaraWorks
