#include "RunUninstaller.h"

#include "../logging/Log.h"

namespace TessaraWorks
{

constexpr int timeLimitMilliseconds = 20000;

bool runUninstaller (const juce::String& uninstallerPath, juce::uint32& exitCode, juce::String arguments)
{
    auto commandLine = "\"" + uninstallerPath + "\"";

    if (arguments.isNotEmpty())
        commandLine << " " << arguments;

    // The library's debug build complains about a program that does not exist.
    juce::ChildProcess uninstaller;
    const auto finished = uninstaller.start (commandLine) && uninstaller.waitForProcessToFinish (timeLimitMilliseconds);

    exitCode = uninstaller.getExitCode();

    if (! finished)
        log (Warning, "Cleaner failed to launch the uninstaller.");

    return finished;
}

} // namespace TessaraWorks
