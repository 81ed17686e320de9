#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks
{

/** The severity of a message. Levels are compared as integers, and a higher one is more severe.
    Any other value is legal too, and is shown with an empty tag.
*/
using LogLevel = juce::int32;

constexpr LogLevel Debug = 0;
constexpr LogLevel Info = 1;
constexpr LogLevel Warning = 2;
constexpr LogLevel Critical = 3;

/** A logger: its settings, and the operations that an implementation provides.

    The settings are plain members that take effect with the next message. Change them and the log
    file only while no other thread is logging.
*/
class LogInterface
{
public:
    virtual ~LogInterface() = default;

    /** Writes a string and a line end to the console: no time stamp, no level tag, no filter, and
        nothing to the log file.
    */
    virtual void write (juce::String text) = 0;

    /** Writes a message as one line to the console and, while one is attached, to the log file.
        A message below minimumLevel is dropped, or goes to the file alone under logAllToFile.
    */
    virtual void log (LogLevel level, juce::String message) = 0;

    /** Attaches a log file in place of the one attached before, trims it if it is too long, and
        appends a banner to it. Deliberate: the banner tells the time on a 12-hour clock, and the
        lines on a 24-hour clock.

        A file that cannot be created or written is not reported: its lines are lost, and the
        console goes on as before.

        @param file                     the file to append to; created if it does not exist
        @param welcomeMessage           a line of the banner
        @param maxInitialFileSizeBytes  a longer file keeps only its last bytes, this many, from the
                                        first line end in them on (without one, it stays whole); zero
                                        deletes the file, and a negative limit leaves it as it is
    */
    virtual void openLogFile (const juce::File& file,
                              const juce::String& welcomeMessage,
                              juce::int64 maxInitialFileSizeBytes) = 0;

    /** Returns the full path of the attached log file, or an empty string if there is none. */
    virtual juce::String getLogFilePath() = 0;

    /** Detaches the log file and writes nothing to it. Does nothing if there is none. */
    virtual void closeLogFile() {}

    /** A message below this level does not reach the console. */
    LogLevel minimumLevel = Debug;

    /** Whether a line begins with a time stamp. */
    bool showTimestamps = true;

    /** Deliberate: no operation reads it. */
    bool spareFlag = false;

    /** Whether a message below minimumLevel still goes to the log file. */
    bool logAllToFile = false;
};

} // namespace TessaraWorks
