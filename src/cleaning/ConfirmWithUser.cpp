#include "ConfirmWithUser.h"

#include "../logging/Log.h"

#include <iostream>
#include <limits>
#include <string>

namespace TessaraWorks
{

// Nothing beyond ASCII is an answer, and on a console with a code page it is no UTF-8 either, which
// JUCE must not be given: it takes the byte 80 for the end of the line, and so for a yes, but copies
// what is behind it, past the end of its memory.
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
        std::getline (std::cin, line);

        if (! isAscii (line))
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
