#pragma once

#include "LogInterface.h"

namespace TessaraWorks
{

/** Returns the process-wide pointer to the logger, for reading and for changing.

    It points at a DefaultLogger that lives until the process exits. While the pointer is null,
    log() drops every message.
*/
LogInterface*& getLogger();

/** Logs a message with the process-wide logger. Does nothing if there is none. */
void log (LogLevel level, juce::String message);

} // namespace TessaraWorks
