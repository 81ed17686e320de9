#pragma once

#include "Console.h"
#include "TemporaryFolder.h"
#include "logging/DefaultLogger.h"

constexpr juce::int64 noLimit = -1;

/** The text that a log file begins with, but for its time. */
inline std::string banner (const std::string& welcomeMessage)
{
    return "\r\n**********************************************************\r\n" + welcomeMessage
         + "\r\nLog started: TIME\r\n\r\n";
}

/** A logger of lines without time stamps, with a console of its own and a file to open. */
class TestLogger : public TessaraWorks::DefaultLogger
{
public:
    TestLogger() { showTimestamps = false; }

    void open() { openLogFile (file, "welcome", noLimit); }

    /** What the console was given so far. */
    std::string shown() const { return console.output(); }

    /** What is in the file, with TIME in the place of the time in each banner. */
    std::string filed() const { return filed (file); }

    static std::string filed (const juce::File& file)
    {
        const std::string label = "Log started: ";
        auto text = bytesOf (file);

        for (auto at = text.find (label); at != std::string::npos; at = text.find (label, at + 1))
            text.replace (at + label.size(), text.find ('\r', at) - at - label.size(), "TIME");

        return text;
    }

    static std::string bytesOf (const juce::File& file)
    {
        juce::MemoryBlock block;
        file.loadFileAsData (block);
        return { static_cast<const char*> (block.getData()), block.getSize() };
    }

    const TemporaryFolder folder;
    const juce::File file = folder.getChildFile ("log");
    Console console;
};
