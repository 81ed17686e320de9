#include "Commands.h"

#include "ApplicationInfo.h"
#include "CleanSession.h"

namespace TessaraWorks
{

juce::ConsoleApplication consoleApplication;

void registerCommands()
{
    const auto cleanAllDescription = juce::String ("Completely cleans out all ") + companyName
                                   + " products from the system.";

    consoleApplication.addDefaultCommand ({ {}, {}, cleanAllDescription, cleanAllDescription, cleanAllCommand });

    consoleApplication.addCommand ({ "--clean",
                                     "--clean",
                                     "Cleans out a product from the system [usage]: --clean={PRODUCT_NAME}",
                                     "Cleans out the target product from the local system for the current user.",
                                     cleanCommand });
}

void cleanAllCommand (const juce::ArgumentList&)
{
    const auto executable = juce::File::getSpecialLocation (juce::File::currentExecutableFile).getFullPathName();

    consoleApplication.findAndRunCommand (juce::ArgumentList (executable, juce::String ("--clean=All")), false);
}

} // namespace TessaraWorks
