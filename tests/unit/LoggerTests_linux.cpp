#include "FileAccess_linux.h"
#include "TemporaryFolder.h"
#include "logging/DefaultLogger.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

using namespace TessaraWorks;

// Makes it the given hour where the process is, and gives the stamp taken then.
static std::string stampInTheHour (int localHour)
{
    const auto hourOf = [] (std::time_t time) { return static_cast<int> (time / 3600 % 24); };
    const DefaultLogger logger;

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
    const TemporaryFolder folder;
    const auto first = folder.getChildFile ("first");
    const auto second = folder.getChildFile ("second");
    DefaultLogger logger;
    logger.openLogFile (first, "one", -1);

    juce::String pathWhenTheSecondIsMade;
    const AfterFileAccess hook (second, [&] { pathWhenTheSecondIsMade = logger.getLogFilePath(); });
    logger.openLogFile (second, "two", -1);

    EXPECT_EQ (pathWhenTheSecondIsMade, first.getFullPathName());
    EXPECT_EQ (logger.getLogFilePath(), second.getFullPathName());
}
