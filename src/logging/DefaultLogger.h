#pragma once

#include "LogInterface.h"

#include <memory>
#include <mutex>

namespace TessaraWorks
{

/** The logger of the program: one line for each message, first to std::cout, then to the log file.

    A line reads [9:05:07:42][Info] and the message. The console line is flushed and the file
    closed again before log() returns, so no line is lost if the program dies right afterwards.
*/
class DefaultLogger : public LogInterface
{
public:
    ~DefaultLogger() override = default;

    void write (juce::String text) override;
    void log (LogLevel level, juce::String message) override;
    void openLogFile (const juce::File& file,
                      const juce::String& welcomeMessage,
                      juce::int64 maxInitialFileSizeBytes) override;
    juce::String getLogFilePath() override;
    void closeLogFile() override;

    /** Returns the local time as a time stamp, such as [14:30:00:0].

        The hour (0 to 23) and the milliseconds (0 to 999) have no leading zeros, so :7] means seven
        milliseconds. That is deliberate.
    */
    juce::String formatTimestamp() const;

private:
    void writeToConsole (const juce::String& text);

    std::unique_ptr<juce::FileLogger> fileLogger;

    // Held for one console write at a time, never while formatting or writing to the file.
    std::mutex consoleMutex;
};

} // namespace TessaraWorks
