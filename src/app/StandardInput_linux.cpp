#include "StandardInput.h"

#include <fcntl.h>
#include <unistd.h>

namespace TessaraWorks
{

// Otherwise the log file, the first file that is opened, would get the number of the standard input.
// JUCE never closes that one, and the prompt would read the log's own lines as answers.
void prepareStandardInput()
{
    if (fcntl (STDIN_FILENO, F_GETFD) == -1)
        open ("/dev/null", O_RDONLY);
}

} // namespace TessaraWorks
