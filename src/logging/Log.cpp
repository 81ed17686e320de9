#include "Log.h"

#include "DefaultLogger.h"

namespace TessaraWorks
{

LogInterface*& getLogger()
{
    static DefaultLogger defaultLogger;
    static LogInterface* logger = &defaultLogger;
    return logger;
}

void log (LogLevel level, juce::String message)
{
    if (auto* logger = getLogger())
        logger->log (level, message);
}

} // namespace TessaraWorks
