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

    The settings are plain members that take effect with the next message. They and the log file
    are to be changed only while no other thread is logging.
*/
class LogInterface
{
public:
    virtual ~LogInterface() = default;

    /** Writes a text to the console as it is, with a line end behind it: no time stamp, no level
        tag, no filter, and nothing to the log file.
    */
    virtual void write (juce::String text) = 0;

    /** Writes a message as one line to the console and, while one is attached, to the log file.
        A message below minimumLevel is dropped, or goes to the file alone under logAllToFile.
    */
    virtual void log (LogLevel level, juce::String message) = 0;

    /** Attaches a log file in place of the one attached before, trims it if it is too long, and
        appends a banner to it.

        A file that cannot be created or written is not reported: its lines are lost, and the
        console goes on as before.

        @param file                     the file to append to; created if it does not exist
        @param welcomeMessage           a line of the banner
        @param maxInitialFileSizeBytes  of a longer file only this many bytes from its end are kept,
                                        from the first line end among them on (without one, the file
                                        is left whole); zero deletes the file, and a negative limit
                                        leaves it alone
    */
    virtual void openLogFile (const juce::File& file,
                              const juce::String& welcomeMessage,
                              juce::int64 maxInitialFileSizeBytes) = 0;

    /** Returns the full path of the attached log file, or an empty text if there is none. */
    virtual juce::String getLogFilePath() = 0;

    /** Detaches the log file and writes nothing to it. Does nothing if there is none. */
    virtual void closeLogFile() {}

    /** A message below this level does not reach the console. */
    LogLevel minimumLevel = Debug;

    /** Whether a line begins with a time stamp. */
    bool showTimestamps = true;

    /** Read by no operation. */
    bool spareFlag = false;

    /** Whether a message below minimumLevel still goes to the log file. */
    bool logAllToFile = false;
};

} // namespace TessaraWorks
