#include "FileAccess_linux.h"
#include "Mutexes_linux.h"
#include "TestLogger.h"

#include <gtest/gtest.h>

#include <sys/time.h>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <future>
#include <system_error>

using namespace TessaraWorks;

static std::atomic<int> readingsOfTheClock;

// Stands in for the system's function in this program. JUCE asks it for the time.
extern "C" int gettimeofday (timeval* time, void*) noexcept
{
    ++readingsOfTheClock;

    timespec now = {};
    const auto answer = clock_gettime (CLOCK_REALTIME, &now);
    *time = { now.tv_sec, now.tv_nsec / 1000 };
    return answer;
}

// Makes it the given hour where the process is, and gives the stamp taken then.
static std::string stampInTheHour (int localHour)
{
    const auto hourOf = [] (std::time_t time) { return static_cast<int> (time / 3600 % 24); };
    const DefaultLogger logger {};

    for (;;)
    {
        const auto before = std::time (nullptr);
        setenv ("TZ", ("TEST" + std::to_string (hourOf (before) - localHour)).c_str(), 1);
        tzset();

        const auto stamp = logger.formatTimestamp().toStdString();

        unsetenv ("TZ");
        tzset();

        if (hourOf (std::time (nullptr)) == hourOf (before))
            return stamp;
    }
}

TEST (TimeStamp, TellsTheHourOfA24HourClockWithoutALeadingZero)
{
    EXPECT_EQ (stampInTheHour (0).substr (0, 3), "[0:");
    EXPECT_EQ (stampInTheHour (9).substr (0, 3), "[9:");
    EXPECT_EQ (stampInTheHour (12).substr (0, 4), "[12:");
    EXPECT_EQ (stampInTheHour (14).substr (0, 4), "[14:");
    EXPECT_EQ (stampInTheHour (23).substr (0, 4), "[23:");
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

TEST (LogFile, IsReplacedBeforeTheOldOneIsDeletedAndClearedBeforeItIsToo)
{
    TestLogger logger;
    logger.open();
    const auto second = logger.folder.getChildFile ("second");

    Mutexes mutexes;
    juce::StringArray pathsWhenOneIsDeleted;
    mutexes.onDestruction = [&] { pathsWhenOneIsDeleted.add (logger.getLogFilePath()); }; // each has a mutex
    logger.openLogFile (second, "two", noLimit);
    logger.closeLogFile();

    EXPECT_EQ (pathsWhenOneIsDeleted, juce::StringArray (second.getFullPathName(), ""));
}

TEST (LoggerConsole, LetsAFailureToLockItOutThroughTheCaller)
{
    TestLogger logger;
    Mutexes mutexes;
    mutexes.cannotBeLocked = true;

    EXPECT_THROW (logger.write ("text"), std::system_error);
    EXPECT_THROW (logger.log (Info, "message"), std::system_error);
    EXPECT_EQ (logger.shown(), "");
}

TEST (LogFilter, ReadsTheClockOnceForAMessageAndNotAtAllForADroppedOne)
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
