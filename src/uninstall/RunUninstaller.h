#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** Starts an uninstaller and waits up to 20000 milliseconds for it to end.

    Deliberate: one that takes longer is left running. Deliberate, too: a failure to start and a
    time-out are logged in the same words; on Windows the exit code tells them apart. On Linux, JUCE
    takes a program that cannot be started for one that has ended with 255.

    @param uninstallerPath  the program to start, without quotes; the command line quotes it whole
    @param exitCode         receives the exit code in every case: 0 if the program did not start, and,
                            if it is still running, 259 (STILL_ACTIVE) on Windows and 0 on Linux
    @param arguments        appended to the quoted program as they are; may be empty
    @returns    whether the program started and ended in time, with any exit code
*/
bool runUninstaller (const juce::String& uninstallerPath, juce::uint32& exitCode, juce::String arguments);

} // namespace TessaraWorks
