#pragma once

#include "logging/Log.h"

#include <functional>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

inline Lines operator+ (Lines lines, const Lines& more)
{
    lines.insert (lines.end(), more.begin(), more.end());
    return lines;
}

/** Returns a file's full path, as it is logged. */
inline std::string pathOf (const juce::File& file) { return file.getFullPathName().toStdString(); }

/** Replaces the process-wide logger while it lives, and records each message as a line such as
    "Info: Files removed: 0", and each opening and closing of the log file as another. Unlike the real
    logger it drops nothing.
*/
class RecordingLogger : public TessaraWorks::LogInterface
{
public:
    RecordingLogger() { TessaraWorks::getLogger() = this; }
    ~RecordingLogger() override { TessaraWorks::getLogger() = previous; }

    JUCE_DECLARE_NON_COPYABLE (RecordingLogger)

    void write (juce::String text) override { add (text.toStdString()); }

    void log (TessaraWorks::LogLevel level, juce::String message) override
    {
        static const char* const names[] = { "Debug", "Info", "Warning", "Critical" };
        add (std::string (names[level]) + ": " + message.toStdString());
    }

    void openLogFile (const juce::File& file, const juce::String& welcomeMessage, juce::int64 limit) override
    {
        add ("Opened " + pathOf (file) + " with '" + welcomeMessage.toStdString() + "' and " + std::to_string (limit)
             + " bytes");
    }

    juce::String getLogFilePath() override { return {}; }
    void closeLogFile() override { add ("Closed"); }

    /** The recorded lines, in order. */
    Lines lines;

    /** Called, if set, with each line after it is recorded. */
    std::function<void (const std::string&)> onLine;

private:
    void add (const std::string& line)
    {
        lines.push_back (line);

        if (onLine)
            onLine (line);
    }

    TessaraWorks::LogInterface* const previous = TessaraWorks::getLogger();
};
