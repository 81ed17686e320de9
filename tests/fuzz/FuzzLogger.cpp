// What the logger writes. The input is a list of steps, with a NUL between each two of them:
//
//   a level and a message    logs the message; the level is a digit, or - or + for the ends of its range
//   <LEVEL                   sets the minimum level
//   wTEXT                    writes the text past the levels
//   t, a, s                  turns over showTimestamps, logAllToFile or spareFlag
//   o, c                     attaches or detaches the log file
//   x                        takes the logger away, or puts it back

#include "Expect.h"
#include "TestLogger.h"
#include "Utf8.h"
#include "logging/Log.h"

#include <limits>
#include <string>

using namespace TessaraWorks;

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

int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    static const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    file.deleteFile();

    const Console console;
    DefaultLogger logger;
    auto isInstalled = true;
    auto isOpen = false;
    std::string shown;
    std::string filed;

    for (const auto& step : split (std::string (data, data + size), '\0'))
    {
        const auto kind = step.empty() ? '1' : step[0];
        const auto text = juce::String::fromUTF8 (asProperUtf8 (step.substr (step.empty() ? 0 : 1)).c_str());

        switch (kind)
        {
        case '<': logger.minimumLevel = toLevel (step.back()); break;
        case 't': logger.showTimestamps = ! logger.showTimestamps; break;
        case 'a': logger.logAllToFile = ! logger.logAllToFile; break;
        case 's': logger.spareFlag = ! logger.spareFlag; break;
        case 'x': isInstalled = ! isInstalled; break;
        case 'w':
            logger.write (text);
            shown += text.toStdString() + "\n";
            break;
        case 'o':
            logger.openLogFile (file, text, noLimit);
            filed += banner (text.toStdString());
            isOpen = true;
            break;
        case 'c':
            logger.closeLogFile();
            isOpen = false;
            break;
        default:
            const auto level = toLevel (kind);
            const auto line = (logger.showTimestamps ? "[time]" : "") + getTag (level) + text.toStdString();
            const auto passes = level >= logger.minimumLevel;

            getLogger() = isInstalled ? &logger : nullptr;
            log (level, text);
            getLogger() = nullptr;

            if (isInstalled && passes)
                shown += line + "\n";

            if (isInstalled && isOpen && (passes || logger.logAllToFile))
                filed += line + "\r\n";
        }

        expectEqual (
            "The path", logger.getLogFilePath().toStdString(), isOpen ? file.getFullPathName().toStdString() : "");
    }

    // A message may read like a time as well.
    expectEqual ("The console", withoutTimes (console.output()), withoutTimes (shown));
    expectEqual ("The file", TestLogger::filed (file), withoutTimes (filed));
    return 0;
}
