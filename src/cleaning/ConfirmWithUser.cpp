#include "ConfirmWithUser.h"

#include "../logging/Log.h"

#include <iostream>
#include <string>

namespace TessaraWorks
{

bool confirmWithUser()
{
    // Outlives the repetitions: a read after the end of the input leaves the line as it was.
    std::string line;

    for (;;)
    {
        std::cout << "Y/n? " << std::flush;
        std::getline (std::cin, line);

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
