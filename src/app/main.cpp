#include "../logging/Log.h"
#include "ApplicationInfo.h"
#include "Commands.h"
#include "Elevation.h"
#include "ShortOptions.h"
#include "StandardInput.h"

using namespace TessaraWorks;

int main (int argc, char* argv[])
{
    prepareStandardInput();

    const auto versionText = juce::String (applicationName) + " " + applicationVersion + " build " + buildTag;

    consoleApplication.addHelpCommand ("--help|-h", "Usage:", true);
    consoleApplication.addVersionCommand ("--version|-v", versionText);
    registerCommands();

    int exitCode = 1;

    // The second gate: the executable's manifest already demands administrator rights.
    if (isProcessElevated())
    {
        const auto args = withPlainShortOptions (juce::ArgumentList (argc, argv));
        exitCode = consoleApplication.findAndRunCommand (args, false);
    }
    else
    {
        log (Critical, "This application must be run with Administrator privileges. Aborting...");
    }

    if (auto* logger = getLogger())
        logger->closeLogFile();

    getLogger() = nullptr;
    return exitCode;
}
