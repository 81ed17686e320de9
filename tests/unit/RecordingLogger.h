#pragma once

#include "logging/Log.h"

#include <functional>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

/** Returns a file's full path, as it is logged. */
inline std::string pathOf (const juce::File& file) { return file.getFullPathName().toStdString(); }

/** Is the process-wide logger while it lives, and keeps what is logged as lines such as
    "Info: Files removed: 0". Unlike the real one it drops nothing.
*/
class RecordingLogger : public TessaraWorks::LogInterface
{
public:
    RecordingLogger() { TessaraWorks::getLogger() = this; }
    ~RecordingLogger() override { TessaraWorks::getLogger() = previous; }

    JUCE_DECLARE_NON_COPYABLE (RecordingLogger)

    void write (juce::String text) override { lines.push_back (text.toStdString()); }

    void log (TessaraWorks::LogLevel level, juce::String message) override
    {
        static const char* const names[] = { "Debug", "Info", "Warning", "Critical" };
        lines.push_back (std::string (names[level]) + ": " + message.toStdString());

        if (onLine)
            onLine (lines.back());
    }

    void openLogFile (const juce::File&, const juce::String&, juce::int64) override {}
    juce::String getLogFilePath() override { return {}; }

    /** All that was logged, in order. */
    Lines lines;

    /** Called with each line when it is logged, if set. */
    std::function<void (const std::string&)> onLine;

private:
    TessaraWorks::LogInterface* const previous = TessaraWorks::getLogger();
};
