// Logs lines to the console and a file, as a session does: LogLines NUMBER FILE

#include <logging/Log.h>

#include <cstdlib>

using namespace TessaraWorks;

int main (int, char* argv[])
{
    getLogger()->openLogFile (juce::File (juce::CharPointer_UTF8 (argv[2])), "Log lines", -1);

    for (auto lines = std::atoi (argv[1]); lines > 0; --lines)
        log (Info, "Directory deleted: /opt/TessaraWorks/Content");

    getLogger()->closeLogFile();
}
