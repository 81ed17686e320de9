#include "CleanSession.h"

#include "../logging/Log.h"
#include "ApplicationInfo.h"
#include "Shell.h"
#include "Targets.h"

#include <iostream>
#include <sstream>
#include <string>

namespace TessaraWorks
{

constexpr juce::int64 logSizeLimitBytes = 5000000;

static juce::String getLogFileName() { return juce::String (applicationName).replace (" ", "") + ".log"; }

static void printBanner()
{
    const auto rule = juce::String::repeatedString ("=", 64);

    std::cout << rule << std::endl;
    std::cout << applicationName << std::endl;
    std::cout << rule << std::endl;
    std::cout << std::endl;
}

static void openLog (const juce::File& logFile)
{
    if (auto* logger = getLogger())
        logger->openLogFile (logFile, juce::String (applicationName) + " session starting", logSizeLimitBytes);

    if (auto* logger = getLogger()) // opening the file may have taken it away
        logger->minimumLevel = Info;
}

static void endWithSuccess (const juce::File& logFile)
{
    std::cout << "Cleaning finished successfully." << std::endl;
    std::cout << "Log file written to: " << logFile.getFullPathName() << std::endl;
    std::cout << "Press enter to exit" << std::endl;

    std::string ignored;
    std::getline (std::cin, ignored);

    initialiseShell();

    if (logFile.existsAsFile())
        logFile.revealToUser();
}

// Deliberate: neither waits for the user nor shows the log file.
static void endWithFailure()
{
    std::ostringstream advice;

    advice << std::endl
           << "Product cleaning failed!" << std::endl
           << std::endl
           << "Follow all instructions in the log entries above (if any), then retry." << std::endl
           << "If an entry failed to delete, ensure it is not open in another application." << std::endl
           << "If issues persist, send an email to: " << supportEmailAddress << std::endl
           << "Attach the '" << getLogFileName() << "' file from your desktop to the email." << std::endl;

    juce::ConsoleApplication::fail (advice.str());
}

void cleanCommand (const juce::ArgumentList& args)
{
    CleanResult result;
    const auto& target = getTarget (args);

    printBanner();

    const auto desktop = juce::File::getSpecialLocation (juce::File::userDesktopDirectory);
    const auto logFile = desktop.getChildFile (getLogFileName());
    openLog (logFile);

    log (Info, target.firstLine);
    target.driver (result);

    if (result.success)
        endWithSuccess (logFile);
    else
        endWithFailure();
}

} // namespace TessaraWorks
