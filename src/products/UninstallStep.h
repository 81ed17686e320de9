#pragma once

#include "../cleaning/CleanResult.h"

namespace TessaraWorks
{

/** What a cleaner knows about an uninstaller of its product. */
struct UninstallStep
{
    /** A part of the display name under which the product is registered. */
    juce::String displayNameFragment;

    /** The arguments for the uninstaller. */
    juce::String arguments;

    /** The name of the product in the advice for the user. */
    juce::String productName;
};

/** Runs the uninstaller if the product is registered, and logs its exit code. Deliberate: the code
    decides nothing. An uninstaller that cannot be started, or does not end in time, is explained to
    the user and sets success to false; nothing sets it to true.
*/
void runUninstallStep (const UninstallStep& step, CleanResult& result);

} // namespace TessaraWorks
