#pragma once

#include "Console.h"
#include "TemporaryFolder.h"
#include "logging/DefaultLogger.h"

#include <regex>

constexpr juce::int64 noLimit = -1;

/** Returns the banner of a log file, with TIME for its time. */
inline std::string banner (const std::string& welcomeMessage)
{
    return "\r\n**********************************************************\r\n" + welcomeMessage
         + "\r\nLog started: TIME\r\n\r\n";
}

/** Returns the text with [time] for each time stamp and TIME for the time of each banner. */
inline std::string withoutTimes (const std::string& text)
{
    static const std::regex stamp (R"((^|\n)\[(1?\d|2[0-3]):[0-5]\d:[0-5]\d:(\d|[1-9]\d{1,2})\])");
    static const std::regex start (R"(Log started: [1-9]\d? [A-Z][a-z]{2} \d{4} [1-9]\d?(:[0-5]\d){2}[ap]m)");
    return std::regex_replace (std::regex_replace (text, stamp, "$1[time]"), start, "Log started: TIME");
}

/** A logger without time stamps, with its own console and a file to open. */
class TestLogger : public TessaraWorks::DefaultLogger
{
public:
    TestLogger() { showTimestamps = false; }

    void open() { openLogFile (file, "welcome", noLimit); }

    /** Returns the console's output so far, without times. */
    std::string shown() const { return withoutTimes (console.output()); }

    /** Returns the contents of the file, without times. */
    std::string filed() const { return filed (file); }
    static std::string filed (const juce::File& logFile) { return withoutTimes (bytesOf (logFile)); }

    static std::string bytesOf (const juce::File& logFile)
    {
        juce::MemoryBlock block;
        logFile.loadFileAsData (block);
        return { static_cast<const char*> (block.getData()), block.getSize() };
    }

    const TemporaryFolder folder;
    const juce::File file = folder.getChildFile ("log");
    Console console;
};
