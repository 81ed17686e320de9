#include "DefaultLogger.h"

#include <iostream>
#include <sstream>

namespace TessaraWorks
{

static const char* getTag (LogLevel level)
{
    static const char* const tags[] = { "Debug", "Info", "Warning", "Critical" };

    return juce::isPositiveAndBelow (level, juce::numElementsInArray (tags)) ? tags[level] : "";
}

void DefaultLogger::write (juce::String text) { writeToConsole (text); }

void DefaultLogger::log (LogLevel level, juce::String message)
{
    const auto reachesConsole = level >= minimumLevel;

    if (! reachesConsole && ! logAllToFile)
        return;

    const auto stamp = showTimestamps ? formatTimestamp() : juce::String();

    // Deliberate: no space between the stamp and the tag.
    std::ostringstream assembled;
    assembled << stamp << "[" << getTag (level) << "] " << message;
    const auto line = juce::String::fromUTF8 (assembled.str().c_str());

    if (reachesConsole)
        writeToConsole (line);

    // The file gets the console's line: without a stamp there, it has none here either.
    if (fileLogger != nullptr)
        fileLogger->logMessage (line);
}

void DefaultLogger::openLogFile (const juce::File& file,
                                 const juce::String& welcomeMessage,
                                 juce::int64 maxInitialFileSizeBytes)
{
    // The new file is complete, with its banner, before the old one goes.
    fileLogger = std::make_unique<juce::FileLogger> (file, welcomeMessage, maxInitialFileSizeBytes);
}

juce::String DefaultLogger::getLogFilePath()
{
    return fileLogger != nullptr ? fileLogger->getLogFile().getFullPathName() : juce::String();
}

void DefaultLogger::writeToConsole (const juce::String& text)
{
    const std::lock_guard<std::mutex> lock (consoleMutex);
    std::cout << text << std::endl;
}

void DefaultLogger::closeLogFile() { fileLogger.reset(); }

juce::String DefaultLogger::formatTimestamp() const
{
    const auto now = juce::Time::getCurrentTime();

    return "[" + now.toString (false, true, true, true) + ":" + juce::String (now.getMilliseconds()) + "]";
}

} // namespace TessaraWorks
