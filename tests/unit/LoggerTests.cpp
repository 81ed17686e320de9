#include "LiveTexts.h"
#include "RecordingLogger.h"
#include "TestLogger.h"
#include "logging/Log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <set>
#include <thread>

using namespace TessaraWorks;

// Reads a number of so many digits, without leading zeros where there may be fewer.
static bool skipNumber (const char*& text, size_t minDigits, size_t maxDigits, int limit)
{
    const std::string digits (text, std::strspn (text, "0123456789"));
    text += digits.size();

    return digits.size() >= minDigits && digits.size() <= maxDigits && std::stoi (digits) < limit
        && (digits.size() == minDigits || digits[0] != '0');
}

// Replaces the time stamp at the beginning of a line, if its form is right.
static std::string withoutStamp (const std::string& line)
{
    const auto* text = line.c_str();

    if (*text++ == '[' && skipNumber (text, 1, 2, 24) && *text++ == ':' && skipNumber (text, 2, 2, 60) && *text++ == ':'
        && skipNumber (text, 2, 2, 60) && *text++ == ':' && skipNumber (text, 1, 3, 1000) && *text++ == ']')
        return std::string ("STAMP") + text;

    return line;
}

static std::string withoutStamps (const std::string& lines)
{
    std::istringstream in (lines);
    std::string result;

    for (std::string line; std::getline (in, line);)
        result += withoutStamp (line) + "\n";

    return result;
}

TEST (LogInterface, BeginsWithItsDefaultSettings)
{
    const DefaultLogger logger;

    EXPECT_EQ (logger.minimumLevel, Debug);
    EXPECT_TRUE (logger.showTimestamps);
    EXPECT_FALSE (logger.spareFlag);
    EXPECT_FALSE (logger.logAllToFile);
}

TEST (LogInterface, HasFourLevelsInTheirOrder)
{
    EXPECT_EQ (Debug, 0);
    EXPECT_EQ (Info, 1);
    EXPECT_EQ (Warning, 2);
    EXPECT_EQ (Critical, 3);
}

TEST (LogInterface, NeedsNoCloseLogFileOfALoggerWithoutAFile)
{
    const Console console;
    RecordingLogger logger;

    logger.LogInterface::closeLogFile();

    EXPECT_TRUE (logger.lines.empty());
    EXPECT_EQ (console.output(), "");
}

TEST (ProcessWideLogger, IsADefaultLoggerUntilItIsReplaced)
{
    EXPECT_NE (dynamic_cast<DefaultLogger*> (getLogger()), nullptr);
    EXPECT_EQ (&getLogger(), &getLogger());
}

TEST (ProcessWideLogger, GetsEachMessageThatIsLogged)
{
    const RecordingLogger logger;

    log (Debug, "one");
    log (Critical, "two");

    EXPECT_EQ (logger.lines, (Lines { "Debug: one", "Critical: two" }));
}

TEST (ProcessWideLogger, CanBeAbsentAndThenMessagesAreDropped)
{
    const Console console;
    auto* const logger = getLogger();

    getLogger() = nullptr;
    log (Critical, "lost");
    getLogger() = logger;

    EXPECT_EQ (console.output(), "");
    EXPECT_EQ (console.errors(), "");
}

TEST (LogLine, HasTheSameStampOnTheConsoleAndInTheFile)
{
    TestLogger logger;
    logger.showTimestamps = true;
    logger.open();

    logger.log (Info, "message");

    const auto shown = logger.shown();
    ASSERT_EQ (withoutStamps (shown), "STAMP[Info] message\n");
    EXPECT_EQ (logger.filed(), banner ("welcome") + shown.substr (0, shown.size() - 1) + "\r\n");
}

TEST (LogLine, HasTheMessageAsItIs)
{
    const std::string messages[] = {
        "",
        "first\nsecond\r\nthird",
        "Gr\xc3\xb6\xc3\x9f\x65 \xe9\x9f\xb3 \xf0\x9f\x8e\xb5",
        std::string (100000, 'x'),
    };

    for (const auto& message : messages)
    {
        TestLogger logger;
        logger.open();

        logger.log (Info, juce::String::fromUTF8 (message.c_str()));

        EXPECT_EQ (logger.shown(), "[Info] " + message + "\n");
        EXPECT_EQ (logger.filed(), banner ("welcome") + "[Info] " + message + "\r\n");
    }
}

constexpr auto allLevels = "[] at -1\n[Debug] at 0\n[Info] at 1\n[Warning] at 2\n[Critical] at 3\n[] at 4\n";

// A minimum level with the lines that pass it, logAllToFile, showTimestamps.
using LogSettings = testing::TestWithParam<std::tuple<std::pair<LogLevel, const char*>, bool, bool>>;

TEST_P (LogSettings, SendEachLevelWhereTheySay)
{
    const auto& [level, logAllToFile, showTimestamps] = GetParam();
    const auto& [minimumLevel, passed] = level;

    TestLogger logger;
    logger.minimumLevel = minimumLevel;
    logger.logAllToFile = logAllToFile;
    logger.showTimestamps = showTimestamps;
    logger.open();

    for (const auto levelOfLine : { -1, 0, 1, 2, 3, 4 })
        logger.log (levelOfLine, "at " + juce::String (levelOfLine));

    const juce::String tag (showTimestamps ? "STAMP[" : "[");
    const auto shown = juce::String (passed).replace ("[", tag);
    const auto filed = juce::String (logAllToFile ? allLevels : passed).replace ("[", tag).replace ("\n", "\r\n");

    EXPECT_EQ (withoutStamps (logger.shown()), shown.toStdString());
    EXPECT_EQ (withoutStamps (logger.filed()), banner ("welcome") + filed.toStdString());
}

INSTANTIATE_TEST_SUITE_P (
    Logger,
    LogSettings,
    testing::Combine (
        testing::Values (std::pair (-1, allLevels),
                         std::pair (Debug, "[Debug] at 0\n[Info] at 1\n[Warning] at 2\n[Critical] at 3\n[] at 4\n"),
                         std::pair (Info, "[Info] at 1\n[Warning] at 2\n[Critical] at 3\n[] at 4\n"),
                         std::pair (Warning, "[Warning] at 2\n[Critical] at 3\n[] at 4\n"),
                         std::pair (Critical, "[Critical] at 3\n[] at 4\n"),
                         std::pair (5, "")),
        testing::Bool(),
        testing::Bool()));

TEST (LogFilter, FormatsNoMessageThatIsDropped)
{
    TestLogger logger;
    logger.minimumLevel = Info;
    const juce::String message ("dropped");

    const auto textsBefore = countTextsMade();
    logger.log (Debug, message);

    EXPECT_EQ (countTextsMade(), textsBefore);
}

TEST (LogFilter, LetsNothingOutWhenAllGoesToAFileThatIsNotThere)
{
    TestLogger logger;
    logger.minimumLevel = Info;
    logger.logAllToFile = true;

    logger.log (Debug, "message");

    EXPECT_EQ (logger.shown(), "");
}

TEST (LogFilter, TakesEffectWithTheNextMessage)
{
    TestLogger logger;

    logger.log (Debug, "before");
    logger.minimumLevel = Info;
    logger.log (Debug, "after");

    EXPECT_EQ (logger.shown(), "[Debug] before\n");
}

TEST (LogFilter, DoesNotReadTheSpareFlag)
{
    TestLogger logger;
    logger.minimumLevel = Info;
    logger.spareFlag = true;

    logger.log (Debug, "dropped");
    logger.log (Info, "kept");

    EXPECT_EQ (logger.shown(), "[Info] kept\n");
}

TEST (LogFilter, ReadsTheMinimumLevelOnceForBothPlaces)
{
    TestLogger logger;
    logger.open();
    logger.console.onFlush = [&] { logger.minimumLevel = Critical; };

    logger.log (Info, "message");

    EXPECT_EQ (logger.shown(), "[Info] message\n");
    EXPECT_EQ (logger.filed(), banner ("welcome") + "[Info] message\r\n");
}

TEST (LoggerWrite, PutsTheBareTextOnTheConsoleAloneAndFlushesIt)
{
    TestLogger logger;
    logger.minimumLevel = 100;
    logger.showTimestamps = true;
    logger.logAllToFile = true;
    logger.open();

    logger.write ("text");
    logger.write ({});

    EXPECT_EQ (logger.console.visibleOutput(), "text\n\n");
    EXPECT_EQ (logger.filed(), banner ("welcome"));
}

TEST (LoggerConsole, ShowsALineBeforeTheFileGetsIt)
{
    TestLogger logger;
    logger.open();
    std::string shown, filed;
    logger.console.onFlush = [&]
    {
        shown = logger.console.visibleOutput();
        filed = logger.filed();
    };

    logger.log (Info, "message");

    EXPECT_EQ (shown, "[Info] message\n");
    EXPECT_EQ (filed, banner ("welcome"));
}

// Gives way to other threads between any two characters.
class SlowConsole : public std::streambuf
{
public:
    std::string text() const { return written; }

private:
    int overflow (int character) override
    {
        {
            const std::lock_guard<std::mutex> lock (mutex);
            written += static_cast<char> (character);
        }

        std::this_thread::yield();
        return character;
    }

    std::string written;
    std::mutex mutex;
};

TEST (LoggerConsole, ShowsWholeLinesOfTwoThreads)
{
    TestLogger logger;
    SlowConsole buffer;
    std::cout.rdbuf (&buffer);

    constexpr int linesOfEach = 200;
    std::atomic<int> ready { 0 };

    const auto meetTheOther = [&]
    {
        for (++ready; ready < 2;)
            std::this_thread::yield();
    };

    std::thread logs (
        [&]
        {
            meetTheOther();

            for (int i = 0; i < linesOfEach; ++i)
                logger.log (Info, "abcdefghijklmnopqrstuvwxyz");
        });

    std::thread writes (
        [&]
        {
            meetTheOther();

            for (int i = 0; i < linesOfEach; ++i)
                logger.write ("0123456789");
        });

    logs.join();
    writes.join();

    std::istringstream lines (buffer.text());
    int logged = 0, written = 0;

    for (std::string line; std::getline (lines, line);)
    {
        if (line == "[Info] abcdefghijklmnopqrstuvwxyz")
            ++logged;
        else if (line == "0123456789")
            ++written;
        else
            ADD_FAILURE() << "A torn line: " << line;
    }

    EXPECT_EQ (logged, linesOfEach);
    EXPECT_EQ (written, linesOfEach);
}

TEST (LogFile, BeginsWithABanner)
{
    TestLogger logger;

    logger.openLogFile (logger.file, "Orvex Cleaner session starting", 5000000);

    EXPECT_EQ (logger.filed(),
               "\r\n"
               "**********************************************************\r\n"
               "Orvex Cleaner session starting\r\n"
               "Log started: TIME\r\n"
               "\r\n");
    EXPECT_EQ (logger.shown(), "");
}

TEST (LogFile, TellsTheLocalTimeOnA12HourClockInItsBanner)
{
    static const char* const months[] = { "Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec" };
    TestLogger logger;

    const auto before = juce::Time::getCurrentTime();
    logger.open();
    const auto after = juce::Time::getCurrentTime();

    std::vector<std::string> possible;

    for (auto time = before; time.toMilliseconds() / 1000 <= after.toMilliseconds() / 1000;
         time += juce::RelativeTime::seconds (1))
    {
        const auto hour = time.getHours() % 12 == 0 ? 12 : time.getHours() % 12;

        char text[100];
        std::snprintf (text,
                       sizeof (text),
                       "Log started: %d %s %d %d:%02d:%02d%s",
                       time.getDayOfMonth(),
                       months[time.getMonth()],
                       time.getYear(),
                       hour,
                       time.getMinutes(),
                       time.getSeconds(),
                       time.getHours() < 12 ? "am" : "pm");
        possible.push_back (text);
    }

    const auto bytes = TestLogger::bytesOf (logger.file);
    const auto line = bytes.substr (bytes.find ("Log started"), bytes.size() - 4 - bytes.find ("Log started"));
    EXPECT_NE (std::find (possible.begin(), possible.end(), line), possible.end()) << line;
}

TEST (LogFile, HasEachLineBeforeLogReturns)
{
    TestLogger logger;
    logger.open();

    logger.log (Info, "one");
    EXPECT_EQ (logger.filed(), banner ("welcome") + "[Info] one\r\n");

    logger.log (Info, "two");
    EXPECT_EQ (logger.filed(), banner ("welcome") + "[Info] one\r\n[Info] two\r\n");
}

TEST (LogFile, IsNoBusinessOfJucesCurrentLogger)
{
    struct CurrentLogger : juce::Logger
    {
        CurrentLogger() { setCurrentLogger (this); }
        ~CurrentLogger() override { setCurrentLogger (nullptr); }
        void logMessage (const juce::String& message) override { messages.push_back (message.toStdString()); }

        Lines messages;
    };

    const CurrentLogger current;
    TestLogger logger;
    logger.open();

    logger.log (Info, "message");

    EXPECT_EQ (juce::Logger::getCurrentLogger(), &current);
    EXPECT_EQ (current.messages, Lines {});

    logger.closeLogFile();

    EXPECT_EQ (juce::Logger::getCurrentLogger(), &current);
}

TEST (LogFile, IsTheSecondOneOnceASecondOneIsOpened)
{
    TestLogger logger;
    const auto second = logger.folder.getChildFile ("second");

    logger.open();
    logger.log (Info, "to the first");
    logger.openLogFile (second, "two", noLimit);
    logger.log (Info, "to the second");

    EXPECT_EQ (logger.filed(), banner ("welcome") + "[Info] to the first\r\n");
    EXPECT_EQ (TestLogger::filed (second), banner ("two") + "[Info] to the second\r\n");
    EXPECT_EQ (logger.getLogFilePath(), second.getFullPathName());
}

TEST (LogFile, GetsASecondBannerWhenItIsOpenedAgain)
{
    TestLogger logger;

    logger.openLogFile (logger.file, "one", 5000000);
    logger.log (Info, "first");
    logger.openLogFile (logger.file, "two", 5000000);
    logger.log (Info, "second");

    EXPECT_EQ (logger.filed(), banner ("one") + "[Info] first\r\n" + banner ("two") + "[Info] second\r\n");
}

TEST (LogFile, GetsNothingMoreOnceItIsClosed)
{
    TestLogger logger;
    logger.open();

    logger.closeLogFile();
    logger.log (Info, "message");

    EXPECT_EQ (logger.filed(), banner ("welcome"));
    EXPECT_EQ (logger.shown(), "[Info] message\n");
}

TEST (LogFile, HasAPathOnlyWhileItIsOpenAndCanBeClosedAtAnyTime)
{
    TestLogger logger;

    EXPECT_EQ (logger.getLogFilePath(), "");
    logger.closeLogFile();
    EXPECT_EQ (logger.getLogFilePath(), "");
    logger.open();
    EXPECT_EQ (logger.getLogFilePath(), logger.file.getFullPathName());
    logger.closeLogFile();
    EXPECT_EQ (logger.getLogFilePath(), "");
    logger.closeLogFile();
    EXPECT_EQ (logger.getLogFilePath(), "");

    EXPECT_EQ (logger.filed(), banner ("welcome"));
    EXPECT_EQ (logger.shown(), "");
}

TEST (LogFile, IsMadeWithTheFoldersAroundIt)
{
    TestLogger logger;
    const auto file = logger.folder.getChildFile ("missing/folder/log");

    logger.openLogFile (file, "welcome", noLimit);

    EXPECT_EQ (TestLogger::filed (file), banner ("welcome"));
}

TEST (LogFile, LosesLinesOneByOneWhileItCannotBeWritten)
{
    TestLogger logger;
    logger.folder.makeFolder ("log");

    logger.openLogFile (logger.file, "welcome", 5000000);
    logger.log (Info, "lost");

    EXPECT_EQ (logger.getLogFilePath(), logger.file.getFullPathName());
    ASSERT_TRUE (logger.file.isDirectory());
    EXPECT_EQ (logger.file.getNumberOfChildFiles (juce::File::findFilesAndDirectories), 0);

    logger.file.deleteFile();
    logger.log (Info, "kept");

    EXPECT_EQ (logger.shown(), "[Info] lost\n[Info] kept\n");
    EXPECT_EQ (logger.filed(), "[Info] kept\r\n");
}

TEST (LogFileSizeLimit, CutsALongerFileAtTheFirstLineEndOfWhatMayStay)
{
    struct Row
    {
        juce::int64 limit;
        std::string kept;
    };

    const Row rows[] = {
        { -1, "one\r\ntwo\r\nthree\r\n" },
        { 17, "one\r\ntwo\r\nthree\r\n" }, // which has just that size
        { 16, "\r\ntwo\r\nthree\r\n" },
        { 0, "" },
    };

    for (const auto& row : rows)
    {
        SCOPED_TRACE (row.limit);
        TestLogger logger;
        logger.file.replaceWithText ("one\r\ntwo\r\nthree\r\n");

        logger.openLogFile (logger.file, "welcome", row.limit);

        EXPECT_EQ (logger.filed(), row.kept + banner ("welcome"));
        EXPECT_EQ (logger.file.getParentDirectory().getNumberOfChildFiles (juce::File::findFilesAndDirectories), 1);
    }
}

TEST (LogFileSizeLimit, DoesNotHoldDuringARun)
{
    TestLogger logger;
    logger.openLogFile (logger.file, "welcome", 10);

    logger.log (Info, "message");

    EXPECT_EQ (logger.filed(), banner ("welcome") + "[Info] message\r\n");
}

// The stamp of a moment, put together without the class under test.
static std::string stampOf (const juce::Time& time)
{
    char text[50];
    std::snprintf (text,
                   sizeof (text),
                   "[%d:%02d:%02d:%d]",
                   time.getHours(),
                   time.getMinutes(),
                   time.getSeconds(),
                   time.getMilliseconds());
    return text;
}

TEST (TimeStamp, TellsTheLocalTimeOnceForAllItsPartsAndTheMillisecondsWithoutLeadingZeros)
{
    const DefaultLogger logger;
    std::set<size_t> digitsOfMilliseconds;

    while (digitsOfMilliseconds.size() < 3) // a second at most
    {
        const auto before = juce::Time::getCurrentTime();
        const auto stamp = logger.formatTimestamp().toStdString();
        const auto after = juce::Time::getCurrentTime();

        auto time = before;

        while (time < after && stamp != stampOf (time))
            time += juce::RelativeTime::milliseconds (1);

        ASSERT_EQ (stamp, stampOf (time));
        digitsOfMilliseconds.insert (std::to_string (time.getMilliseconds()).size());
    }
}
