#pragma once

#include "Console.h"
#include "TemporaryFolder.h"
#include "logging/DefaultLogger.h"

#include <regex>

constexpr juce::int64 noLimit = -1;

/** The text that a log file begins with, but for its time. */
inline std::string banner (const std::string& welcomeMessage)
{
    return "\r\n**********************************************************\r\n" + welcomeMessage
         + "\r\nLog started: TIME\r\n\r\n";
}

/** Returns the text with [time] and TIME in the places of the time stamps and of the times of banners. */
inline std::string withoutTimes (const std::string& text)
{
    static const std::regex stamp (R"((^|\n)\[(1?\d|2[0-3]):[0-5]\d:[0-5]\d:(\d|[1-9]\d{1,2})\])");
    static const std::regex start (R"(Log started: [1-9]\d? [A-Z][a-z]{2} \d{4} [1-9]\d?(:[0-5]\d){2}[ap]m)");
    return std::regex_replace (std::regex_replace (text, stamp, "$1[time]"), start, "Log started: TIME");
}

/** A logger of lines without time stamps, with a console of its own and a file to open. */
class TestLogger : public TessaraWorks::DefaultLogger
{
public:
    TestLogger() { showTimestamps = false; }

    void open() { openLogFile (file, "welcome", noLimit); }

    /** What the console was given so far, without the times. */
    std::string shown() const { return withoutTimes (console.output()); }

    /** What is in the file, without the times. */
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
