#include "FileAccess_linux.h"
#include "Mutexes_linux.h"
#include "TestLogger.h"

#include <gtest/gtest.h>

#include <sys/time.h>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <future>
#include <optional>
#include <system_error>

using namespace TessaraWorks;

static std::atomic<int> readingsOfTheClock;
static std::optional<juce::int64> millisecondsOnTheClock;

// Replaces the system's function in this program. JUCE reads the time with it.
extern "C" int gettimeofday (timeval* time, void*) noexcept
{
    ++readingsOfTheClock;

    timespec now = {};
    const auto answer = clock_gettime (CLOCK_REALTIME, &now);
    *time = { now.tv_sec, now.tv_nsec / 1000 };

    if (millisecondsOnTheClock)
        *time = { *millisecondsOnTheClock / 1000, *millisecondsOnTheClock % 1000 * 1000 };

    return answer;
}

/** While it lives, the clock shows this time of 2 January 1970, in a zone that is three hours ahead of UTC. */
class StoppedClock
{
public:
    StoppedClock (int hours, int minutes, int seconds, int milliseconds)
    {
        setenv ("TZ", "TEST-3", 1);
        tzset();
        millisecondsOnTheClock = ((((hours - 3 + 24) * 60 + minutes) * 60 + seconds) * 1000LL) + milliseconds;
    }

    ~StoppedClock()
    {
        millisecondsOnTheClock.reset();
        unsetenv ("TZ");
        tzset();
    }

    JUCE_DECLARE_NON_COPYABLE (StoppedClock)
};

static std::string stampAt (int hours, int minutes, int seconds, int milliseconds)
{
    const StoppedClock clock (hours, minutes, seconds, milliseconds);
    return DefaultLogger().formatTimestamp().toStdString();
}

TEST (TimeStamp, ShowsA24HourClockWithoutLeadingZerosInHoursAndMilliseconds)
{
    EXPECT_EQ (stampAt (0, 0, 1, 999), "[0:00:01:999]");
    EXPECT_EQ (stampAt (9, 5, 7, 42), "[9:05:07:42]");
    EXPECT_EQ (stampAt (12, 59, 59, 7), "[12:59:59:7]");
    EXPECT_EQ (stampAt (14, 30, 0, 0), "[14:30:00:0]");
    EXPECT_EQ (stampAt (23, 10, 10, 70), "[23:10:10:70]");
    EXPECT_EQ (stampAt (23, 10, 10, 700), "[23:10:10:700]");
}

TEST (LogFile, ShowsTheLocalTimeOnA12HourClockInItsBanner)
{
    const auto bannerAt = [] (int hours)
    {
        const StoppedClock clock (hours, 5, 7, 42);
        TestLogger logger;
        logger.open();
        return juce::String (TestLogger::bytesOf (logger.file)).fromFirstOccurrenceOf ("welcome", false, false);
    };

    EXPECT_EQ (bannerAt (0), "\r\nLog started: 2 Jan 1970 12:05:07am\r\n\r\n");
    EXPECT_EQ (bannerAt (9), "\r\nLog started: 2 Jan 1970 9:05:07am\r\n\r\n");
    EXPECT_EQ (bannerAt (12), "\r\nLog started: 2 Jan 1970 12:05:07pm\r\n\r\n");
    EXPECT_EQ (bannerAt (23), "\r\nLog started: 2 Jan 1970 11:05:07pm\r\n\r\n");
}

TEST (LogFile, StaysAttachedUntilTheNextOneIsComplete)
{
    TestLogger logger;
    logger.open();
    const auto second = logger.folder.getChildFile ("second");

    juce::String pathWhenTheSecondIsMade;
    const AfterFileAccess hook (second, [&] { pathWhenTheSecondIsMade = logger.getLogFilePath(); });
    logger.openLogFile (second, "two", noLimit);

    EXPECT_EQ (pathWhenTheSecondIsMade, logger.file.getFullPathName());
    EXPECT_EQ (logger.getLogFilePath(), second.getFullPathName());
}

TEST (LogFile, IsReplacedOrClearedBeforeTheOldOneIsDestroyed)
{
    TestLogger logger;
    logger.open();
    const auto second = logger.folder.getChildFile ("second");

    Mutexes mutexes;
    juce::StringArray pathsWhenOneIsDeleted;
    mutexes.onDestruction = [&] { pathsWhenOneIsDeleted.add (logger.getLogFilePath()); }; // each file has a mutex
    logger.openLogFile (second, "two", noLimit);
    logger.closeLogFile();

    EXPECT_EQ (pathsWhenOneIsDeleted, juce::StringArray (second.getFullPathName(), ""));
}

TEST (LoggerConsole, ThrowsToTheCallerWhenItCannotBeLocked)
{
    TestLogger logger;
    Mutexes mutexes;
    mutexes.cannotBeLocked = true;

    EXPECT_THROW (logger.write ("text"), std::system_error);
    EXPECT_THROW (logger.log (Info, "message"), std::system_error);
    EXPECT_EQ (logger.shown(), "");
}

TEST (LogFilter, ReadsTheClockOnceForAMessageAndNeverForADroppedOne)
{
    TestLogger logger;
    logger.showTimestamps = true;
    logger.minimumLevel = Info;
    logger.open();

    const auto before = readingsOfTheClock.load();
    logger.log (Debug, "dropped");
    const auto afterTheDropped = readingsOfTheClock.load();
    logger.log (Info, "message");
    const auto afterTheMessage = readingsOfTheClock.load();

    EXPECT_EQ (afterTheDropped - before, 0);
    EXPECT_EQ (afterTheMessage - afterTheDropped, 1);
}

TEST (LoggerConsole, IsFreeForOtherThreadsWhileTheFileIsWritten)
{
    TestLogger logger;
    logger.open();

    std::future<void> written;
    auto outcome = std::future_status::deferred;
    const AfterFileAccess hook (logger.file,
                                [&]
                                {
                                    written = std::async (std::launch::async, [&] { logger.write ("meanwhile"); });
                                    outcome = written.wait_for (std::chrono::seconds (5));
                                });
    logger.log (Info, "message");

    EXPECT_EQ (outcome, std::future_status::ready);
    EXPECT_EQ (logger.shown(), "[Info] message\nmeanwhile\n");
}
