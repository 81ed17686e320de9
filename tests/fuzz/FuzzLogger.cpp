// What the logger writes. The input is a list of steps, with a NUL between each two of them:
//
//   a level and a message    logs the message; the level is a digit, or - or + for the ends of its range
//   <LEVEL                   sets the minimum level
//   wTEXT                    writes the text past the levels
//   t, a, s                  turns over showTimestamps, logAllToFile or spareFlag
//   o, c                     attaches or detaches the log file
//   x                        takes the logger away, or puts it back

#include "Console.h"
#include "Expect.h"
#include "Utf8.h"
#include "logging/DefaultLogger.h"
#include "logging/Log.h"

#include <unistd.h>

#include <algorithm>
#include <limits>
#include <string>

using namespace TessaraWorks;

static juce::File getLogFile()
{
    const auto temporary = juce::File::getSpecialLocation (juce::File::tempDirectory);
    static const auto file = temporary.getChildFile ("orvex-fuzz-" + juce::String (getpid()) + ".log");
    return file;
}

// Any other character than a digit stands for a level as well, most of them without a tag.
static LogLevel toLevel (char c)
{
    if (c == '-')
        return std::numeric_limits<LogLevel>::min();

    return c == '+' ? std::numeric_limits<LogLevel>::max() : c - '0';
}

static std::string getTag (LogLevel level)
{
    switch (level)
    {
    case 0: return "[Debug] ";
    case 1: return "[Info] ";
    case 2: return "[Warning] ";
    case 3: return "[Critical] ";
    default: return "[] ";
    }
}

// Returns the line without its time stamp, which has to be one.
static std::string withoutStamp (const std::string& line)
{
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
    std::sscanf (line.c_str(), "[%d:%d:%d:%d]", &hour, &minute, &second, &millisecond);

    char stamp[40] = {};
    std::snprintf (stamp, sizeof (stamp), "[%d:%02d:%02d:%d]", hour, minute, second, millisecond);
    expectEqual ("The stamp", line.substr (0, std::string (stamp).size()), stamp);

    const auto isTime = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 61
                     && millisecond >= 0 && millisecond < 1000;
    expectEqual ("The time", isTime ? "possible" : stamp, "possible");

    return line.substr (std::string (stamp).size());
}

// Takes off a line end, which has to be there.
static std::string withoutEnd (const std::string& text, const std::string& lineEnd)
{
    const auto length = text.size() - std::min (text.size(), lineEnd.size());
    expectEqual ("The line end", text.substr (length), lineEnd);
    return text.substr (0, length);
}

/** What the console and the log file receive from one step. */
class Sinks
{
public:
    Sinks()
        : sizeBefore (getLogFile().getSize())
    {
    }

    std::string getConsoleText() const { return console.output(); }

    std::string getFileText() const
    {
        juce::FileInputStream file (getLogFile());
        file.setPosition (sizeBefore);
        juce::MemoryBlock added;
        file.readIntoMemoryBlock (added);
        return std::string (static_cast<const char*> (added.getData()), added.getSize());
    }

private:
    Console console;
    juce::int64 sizeBefore;
};

static void logAndCompare (const DefaultLogger& logger, bool isInstalled, LogLevel level, const juce::String& message)
{
    const auto reachesConsole = isInstalled && level >= logger.minimumLevel;
    const auto reachesFile = isInstalled && const_cast<DefaultLogger&> (logger).getLogFilePath().isNotEmpty()
                          && (level >= logger.minimumLevel || logger.logAllToFile);

    const Sinks sinks;
    log (level, message);

    const auto onConsole = sinks.getConsoleText();
    const auto inFile = sinks.getFileText();
    const auto expected = getTag (level) + message.toStdString();
    const auto stripped = [&] (const std::string& line) { return logger.showTimestamps ? withoutStamp (line) : line; };

    if (reachesConsole)
        expectEqual ("The console", stripped (withoutEnd (onConsole, "\n")), expected);
    else
        expectEqual ("The console", onConsole, "");

    if (reachesFile)
        expectEqual ("The file", stripped (withoutEnd (inFile, "\r\n")), expected);
    else
        expectEqual ("The file", inFile, "");

    if (reachesConsole && reachesFile)
        expectEqual ("Console and file", withoutEnd (onConsole, "\n"), withoutEnd (inFile, "\r\n"));
}

static void writeAndCompare (DefaultLogger& logger, const juce::String& text)
{
    const Sinks sinks;
    logger.write (text);

    expectEqual ("The console", sinks.getConsoleText(), text.toStdString() + "\n");
    expectEqual ("The file", sinks.getFileText(), "");
}

int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    DefaultLogger logger;
    auto isInstalled = true;

    getLogFile().deleteFile();

    for (const auto& step : split (std::string (data, data + size), '\0'))
    {
        const auto kind = step.empty() ? '1' : step[0];
        const auto text = juce::String::fromUTF8 (asProperUtf8 (step.substr (step.empty() ? 0 : 1)).c_str());
        getLogger() = isInstalled ? &logger : nullptr;

        switch (kind)
        {
        case '<': logger.minimumLevel = toLevel (step.back()); break;
        case 'w': writeAndCompare (logger, text); break;
        case 't': logger.showTimestamps = ! logger.showTimestamps; break;
        case 'a': logger.logAllToFile = ! logger.logAllToFile; break;
        case 's': logger.spareFlag = ! logger.spareFlag; break;
        case 'o':
            logger.openLogFile (getLogFile(), text, -1);
            expectEqual (
                "The path", logger.getLogFilePath().toStdString(), getLogFile().getFullPathName().toStdString());
            break;
        case 'c':
            logger.closeLogFile();
            expectEqual ("The path", logger.getLogFilePath().toStdString(), "");
            break;
        case 'x': isInstalled = ! isInstalled; break;
        default: logAndCompare (logger, isInstalled, toLevel (kind), text); break;
        }
    }

    getLogger() = nullptr;
    getLogFile().deleteFile();
    return 0;
}
