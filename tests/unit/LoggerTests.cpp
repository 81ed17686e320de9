#include "Console.h"
#include "LiveTexts.h"
#include "RecordingLogger.h"
#include "TemporaryFolder.h"
#include "logging/DefaultLogger.h"
#include "logging/Log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <thread>
#include <type_traits>

using namespace TessaraWorks;

constexpr juce::int64 noLimit = -1;

static std::string bytesOf (const juce::File& file)
{
    juce::MemoryBlock block;
    file.loadFileAsData (block);
    return { static_cast<const char*> (block.getData()), block.getSize() };
}

// Replaces the times in the banners, which have a test of their own.
static std::string withoutBannerTime (std::string text)
{
    const std::string label = "Log started: ";

    for (auto at = text.find (label); at != std::string::npos; at = text.find (label, at + 1))
        text.replace (at + label.size(), text.find ('\r', at) - at - label.size(), "TIME");

    return text;
}

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

static std::string banner (const std::string& welcomeMessage)
{
    return "\r\n**********************************************************\r\n" + welcomeMessage
         + "\r\nLog started: TIME\r\n\r\n";
}

struct LoggerWithoutStamps : DefaultLogger
{
    LoggerWithoutStamps() { showTimestamps = false; }
};

TEST (LogInterface, BeginsWithItsDefaultSettings)
{
    const DefaultLogger logger;

    EXPECT_EQ (logger.minimumLevel, Debug);
    EXPECT_TRUE (logger.showTimestamps);
    EXPECT_FALSE (logger.spareFlag);
    EXPECT_FALSE (logger.logAllToFile);
}

TEST (LogInterface, HasFourLevelsThatAreSigned32BitNumbers)
{
    static_assert (std::is_same_v<LogLevel, juce::int32>);

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

TEST (LogLine, HasTheLevelsTagInFrontOfTheMessage)
{
    const Console console;
    LoggerWithoutStamps logger;

    logger.log (Debug, "one");
    logger.log (Info, "two");
    logger.log (Warning, "three");
    logger.log (Critical, "four");

    EXPECT_EQ (console.output(), "[Debug] one\n[Info] two\n[Warning] three\n[Critical] four\n");
}

TEST (LogLine, HasAnEmptyTagAtALevelThatHasNoName)
{
    const Console console;
    LoggerWithoutStamps logger;
    logger.minimumLevel = -2;

    logger.log (7, "seven");
    logger.log (4, "four");
    logger.log (-1, "minus one");
    logger.log (-2, "minus two");

    EXPECT_EQ (console.output(), "[] seven\n[] four\n[] minus one\n[] minus two\n");
}

TEST (LogLine, BeginsWithAStampAndNoBlankBehindIt)
{
    const Console console;
    DefaultLogger logger;

    logger.log (Critical, "This application must be run with Administrator privileges. Aborting...");

    EXPECT_EQ (withoutStamps (console.output()),
               "STAMP[Critical] This application must be run with Administrator privileges. Aborting...\n");
}

TEST (LogLine, IsTheSameOnTheConsoleAndInTheFile)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    DefaultLogger logger;
    logger.openLogFile (file, "welcome", noLimit);
    const auto lengthOfBanner = bytesOf (file).size();

    logger.log (Info, "message");

    auto line = console.output();
    ASSERT_EQ (withoutStamps (line), "STAMP[Info] message\n");
    EXPECT_EQ (bytesOf (file).substr (lengthOfBanner), line.replace (line.size() - 1, 1, "\r\n"));
}

TEST (LogLine, BeginsWithTheTagInBothPlacesWithoutStamps)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    LoggerWithoutStamps logger;
    logger.openLogFile (file, "welcome", noLimit);

    logger.log (Warning, "message");

    EXPECT_EQ (console.output(), "[Warning] message\n");
    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome") + "[Warning] message\r\n");
}

TEST (LogLine, EndsInABlankForAnEmptyMessage)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    LoggerWithoutStamps logger;
    logger.openLogFile (file, "welcome", noLimit);

    logger.log (Info, {});

    EXPECT_EQ (console.output(), "[Info] \n");
    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome") + "[Info] \r\n");
}

TEST (LogLine, IsNotSplitAtALineEndInsideOfTheMessage)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    DefaultLogger logger;
    logger.openLogFile (file, "welcome", noLimit);
    const auto lengthOfBanner = bytesOf (file).size();

    logger.log (Info, "first\nsecond\r\nthird");

    EXPECT_EQ (withoutStamps (console.output()), "STAMP[Info] first\nsecond\r\nthird\n");
    EXPECT_EQ (withoutStamps (bytesOf (file).substr (lengthOfBanner)), "STAMP[Info] first\nsecond\r\nthird\r\n");
}

TEST (LogLine, IsUtf8)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    LoggerWithoutStamps logger;
    logger.openLogFile (file, "welcome", noLimit);

    logger.log (Info, juce::String::fromUTF8 (u8"Gr\u00f6\u00dfe \u97f3 \U0001f3b5"));

    EXPECT_EQ (console.output(), "[Info] Gr\xc3\xb6\xc3\x9f\x65 \xe9\x9f\xb3 \xf0\x9f\x8e\xb5\n");
    EXPECT_EQ (withoutBannerTime (bytesOf (file)),
               banner ("welcome") + "[Info] Gr\xc3\xb6\xc3\x9f\x65 \xe9\x9f\xb3 \xf0\x9f\x8e\xb5\r\n");
}

TEST (LogLine, CanBeVeryLong)
{
    const Console console;
    LoggerWithoutStamps logger;

    logger.log (Info, juce::String::repeatedString ("x", 100000));

    EXPECT_EQ (console.output(), "[Info] " + std::string (100000, 'x') + "\n");
}

TEST (LogFilter, SendsEachLevelWhereTheSettingsSay)
{
    struct Row
    {
        LogLevel minimumLevel;
        juce::String passed;
    };

    const Row rows[] = {
        { -1, "[] at -1\n[Debug] at 0\n[Info] at 1\n[Warning] at 2\n[Critical] at 3\n[] at 7\n" },
        { Debug, "[Debug] at 0\n[Info] at 1\n[Warning] at 2\n[Critical] at 3\n[] at 7\n" },
        { Info, "[Info] at 1\n[Warning] at 2\n[Critical] at 3\n[] at 7\n" },
        { Warning, "[Warning] at 2\n[Critical] at 3\n[] at 7\n" },
        { Critical, "[Critical] at 3\n[] at 7\n" },
        { 8, "" },
    };

    const juce::String all = "[] at -1\n[Debug] at 0\n[Info] at 1\n[Warning] at 2\n[Critical] at 3\n[] at 7\n";

    for (const auto& row : rows)
        for (const auto logAllToFile : { false, true })
            for (const auto showTimestamps : { false, true })
            {
                SCOPED_TRACE (testing::Message() << "minimumLevel " << row.minimumLevel << ", logAllToFile "
                                                 << logAllToFile << ", showTimestamps " << showTimestamps);

                const TemporaryFolder folder;
                const auto file = folder.getChildFile ("log");
                const Console console;
                DefaultLogger logger;
                logger.minimumLevel = row.minimumLevel;
                logger.logAllToFile = logAllToFile;
                logger.showTimestamps = showTimestamps;
                logger.openLogFile (file, "welcome", noLimit);
                const auto lengthOfBanner = bytesOf (file).size();

                for (const auto level : { -1, 0, 1, 2, 3, 7 })
                    logger.log (level, "at " + juce::String (level));

                const juce::String tag (showTimestamps ? "STAMP[" : "[");
                const auto expectedOnConsole = row.passed.replace ("[", tag);
                const auto expectedInFile = (logAllToFile ? all : row.passed).replace ("[", tag).replace ("\n", "\r\n");

                EXPECT_EQ (withoutStamps (console.output()), expectedOnConsole.toStdString());
                EXPECT_EQ (withoutStamps (bytesOf (file).substr (lengthOfBanner)), expectedInFile.toStdString());
            }
}

TEST (LogFilter, FormatsNoMessageThatIsDropped)
{
    const Console console;
    LoggerWithoutStamps logger;
    logger.minimumLevel = Info;
    const juce::String message ("dropped");

    const auto textsBefore = countTextsMade();
    logger.log (Debug, message);

    EXPECT_EQ (countTextsMade(), textsBefore);
}

TEST (LogFilter, LetsNothingOutWhenAllGoesToAFileThatIsNotThere)
{
    const Console console;
    DefaultLogger logger;
    logger.minimumLevel = Info;
    logger.logAllToFile = true;

    logger.log (Debug, "message");

    EXPECT_EQ (console.output(), "");
}

TEST (LogFilter, TakesEffectWithTheNextMessage)
{
    const Console console;
    LoggerWithoutStamps logger;

    logger.log (Debug, "before");
    logger.minimumLevel = Info;
    logger.log (Debug, "after");

    EXPECT_EQ (console.output(), "[Debug] before\n");
}

TEST (LogFilter, DoesNotReadTheSpareFlag)
{
    const Console console;
    LoggerWithoutStamps logger;
    logger.minimumLevel = Info;
    logger.spareFlag = true;

    logger.log (Debug, "dropped");
    logger.log (Info, "kept");

    EXPECT_EQ (console.output(), "[Info] kept\n");
}

TEST (LoggerWrite, PutsTheBareTextOnTheConsoleAlone)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    DefaultLogger logger;
    logger.minimumLevel = 100;
    logger.logAllToFile = true;
    logger.openLogFile (file, "welcome", noLimit);

    logger.write ("text");
    logger.write ({});

    EXPECT_EQ (console.output(), "text\n\n");
    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome"));
}

TEST (LoggerWrite, FlushesTheConsole)
{
    const Console console;
    DefaultLogger logger;

    logger.write ("text");

    EXPECT_EQ (console.visibleOutput(), "text\n");
}

TEST (LoggerConsole, ShowsALineBeforeTheFileGetsIt)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    Console console;
    std::string shown, filed;
    console.onFlush = [&]
    {
        shown = console.visibleOutput();
        filed = bytesOf (file);
    };
    LoggerWithoutStamps logger;
    logger.openLogFile (file, "welcome", noLimit);

    logger.log (Info, "message");

    EXPECT_EQ (shown, "[Info] message\n");
    EXPECT_EQ (withoutBannerTime (filed), banner ("welcome"));
    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome") + "[Info] message\r\n");
}

TEST (LogFilter, ReadsTheMinimumLevelOnceForBothPlaces)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    Console console;
    LoggerWithoutStamps logger;
    logger.openLogFile (file, "welcome", noLimit);
    console.onFlush = [&] { logger.minimumLevel = Critical; };

    logger.log (Info, "message");

    EXPECT_EQ (console.output(), "[Info] message\n");
    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome") + "[Info] message\r\n");
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
    const Console console;
    SlowConsole buffer;
    std::cout.rdbuf (&buffer);
    LoggerWithoutStamps logger;

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
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("OrvexCleaner.log");
    const Console console;
    DefaultLogger logger;

    logger.openLogFile (file, "Orvex Cleaner session starting", 5000000);

    EXPECT_EQ (withoutBannerTime (bytesOf (file)),
               "\r\n"
               "**********************************************************\r\n"
               "Orvex Cleaner session starting\r\n"
               "Log started: TIME\r\n"
               "\r\n");
    EXPECT_EQ (console.output(), "");
}

TEST (LogFile, TellsTheLocalTimeOnA12HourClockInItsBanner)
{
    static const char* const months[] = { "Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec" };
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    DefaultLogger logger;

    const auto before = juce::Time::getCurrentTime();
    logger.openLogFile (file, "welcome", noLimit);
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

    const auto bytes = bytesOf (file);
    const auto line = bytes.substr (bytes.find ("Log started"), bytes.size() - 4 - bytes.find ("Log started"));
    EXPECT_NE (std::find (possible.begin(), possible.end(), line), possible.end()) << line;
}

TEST (LogFile, HasEachLineBeforeLogReturns)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    LoggerWithoutStamps logger;
    logger.openLogFile (file, "welcome", noLimit);

    logger.log (Info, "one");
    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome") + "[Info] one\r\n");

    logger.log (Info, "two");
    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome") + "[Info] one\r\n[Info] two\r\n");
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

    const TemporaryFolder folder;
    const Console console;
    const CurrentLogger current;
    DefaultLogger logger;
    logger.openLogFile (folder.getChildFile ("log"), "welcome", noLimit);

    logger.log (Info, "message");

    EXPECT_EQ (juce::Logger::getCurrentLogger(), &current);
    EXPECT_EQ (current.messages, Lines {});

    logger.closeLogFile();

    EXPECT_EQ (juce::Logger::getCurrentLogger(), &current);
}

TEST (LogFile, IsTheSecondOneOnceASecondOneIsOpened)
{
    const TemporaryFolder folder;
    const auto first = folder.getChildFile ("first");
    const auto second = folder.getChildFile ("second");
    const Console console;
    LoggerWithoutStamps logger;

    logger.openLogFile (first, "one", noLimit);
    logger.log (Info, "to the first");
    logger.openLogFile (second, "two", noLimit);
    logger.log (Info, "to the second");

    EXPECT_EQ (withoutBannerTime (bytesOf (first)), banner ("one") + "[Info] to the first\r\n");
    EXPECT_EQ (withoutBannerTime (bytesOf (second)), banner ("two") + "[Info] to the second\r\n");
    EXPECT_EQ (logger.getLogFilePath(), second.getFullPathName());
}

TEST (LogFile, GetsASecondBannerWhenItIsOpenedAgain)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    LoggerWithoutStamps logger;

    logger.openLogFile (file, "one", 5000000);
    logger.log (Info, "first");
    logger.openLogFile (file, "two", 5000000);
    logger.log (Info, "second");

    EXPECT_EQ (withoutBannerTime (bytesOf (file)),
               banner ("one") + "[Info] first\r\n" + banner ("two") + "[Info] second\r\n");
}

TEST (LogFile, CollectsTheRunsOneAfterTheOther)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;

    for (const auto* run : { "first run", "second run" })
    {
        LoggerWithoutStamps logger;
        logger.openLogFile (file, run, 5000000);
        logger.log (Info, "message");
        logger.closeLogFile();
    }

    EXPECT_EQ (withoutBannerTime (bytesOf (file)),
               banner ("first run") + "[Info] message\r\n" + banner ("second run") + "[Info] message\r\n");
}

TEST (LogFile, GetsNothingMoreOnceItIsClosed)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    LoggerWithoutStamps logger;
    logger.openLogFile (file, "welcome", noLimit);

    logger.closeLogFile();
    logger.log (Info, "message");

    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome"));
    EXPECT_EQ (console.output(), "[Info] message\n");
}

TEST (LogFile, CanBeClosedRepeatedlyAndWithoutBeingOpen)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    LoggerWithoutStamps logger;

    logger.closeLogFile();
    EXPECT_EQ (logger.getLogFilePath(), "");

    logger.openLogFile (file, "welcome", noLimit);
    logger.closeLogFile();
    logger.closeLogFile();
    EXPECT_EQ (logger.getLogFilePath(), "");
    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome"));
    EXPECT_EQ (console.output(), "");
}

TEST (LogFile, HasAPathOnlyWhileItIsAttached)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    DefaultLogger logger;

    EXPECT_EQ (logger.getLogFilePath(), "");
    logger.openLogFile (file, "welcome", noLimit);
    EXPECT_EQ (logger.getLogFilePath(), file.getFullPathName());
    logger.closeLogFile();
    EXPECT_EQ (logger.getLogFilePath(), "");
}

TEST (LogFile, IsMadeWithTheFoldersAroundIt)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("missing").getChildFile ("folder").getChildFile ("log");
    DefaultLogger logger;

    logger.openLogFile (file, "welcome", noLimit);

    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome"));
}

TEST (LogFile, MayBeOneThatCannotBeWritten)
{
    const TemporaryFolder folder;
    const auto file = folder.makeFolder ("log");
    const Console console;
    LoggerWithoutStamps logger;

    logger.openLogFile (file, "welcome", 5000000);
    logger.log (Info, "message");

    EXPECT_EQ (console.output(), "[Info] message\n");
    EXPECT_EQ (logger.getLogFilePath(), file.getFullPathName());
    EXPECT_TRUE (file.isDirectory());
    EXPECT_EQ (file.getNumberOfChildFiles (juce::File::findFilesAndDirectories), 0);
}

TEST (LogFile, LosesLinesOneByOneWhileItCannotBeWritten)
{
    const TemporaryFolder folder;
    const auto file = folder.makeFolder ("log");
    const Console console;
    LoggerWithoutStamps logger;
    logger.openLogFile (file, "welcome", 5000000);

    logger.log (Info, "lost");
    file.deleteFile();
    logger.log (Info, "kept");

    EXPECT_EQ (bytesOf (file), "[Info] kept\r\n");
}

TEST (LogFileSizeLimit, LeavesAFileOfExactlyThatSizeAlone)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    file.replaceWithText ("one\r\ntwo\r\nthree\r\n");
    DefaultLogger logger;

    logger.openLogFile (file, "welcome", 17);

    EXPECT_EQ (withoutBannerTime (bytesOf (file)), "one\r\ntwo\r\nthree\r\n" + banner ("welcome"));
}

TEST (LogFileSizeLimit, CutsALongerFileAtTheFirstLineEndOfWhatMayStay)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    file.replaceWithText ("one\r\ntwo\r\nthree\r\n");
    DefaultLogger logger;

    logger.openLogFile (file, "welcome", 16);

    EXPECT_EQ (withoutBannerTime (bytesOf (file)), "\r\ntwo\r\nthree\r\n" + banner ("welcome"));
    EXPECT_EQ (static_cast<const juce::File&> (folder).getNumberOfChildFiles (juce::File::findFilesAndDirectories), 1);
}

TEST (LogFileSizeLimit, KeepsFiveMillionBytesOfASessionsLog)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const auto lines = juce::String::repeatedString ("0123456789abcdef--\r\n", 250000); // too many to be shown
    DefaultLogger logger;

    file.replaceWithText (lines);
    ASSERT_EQ (file.getSize(), 5000000);
    logger.openLogFile (file, "welcome", 5000000);
    EXPECT_TRUE (withoutBannerTime (bytesOf (file)) == lines.toStdString() + banner ("welcome"));

    file.replaceWithText ("x" + lines);
    ASSERT_EQ (file.getSize(), 5000001);
    logger.openLogFile (file, "welcome", 5000000);
    EXPECT_TRUE (withoutBannerTime (bytesOf (file)) == lines.substring (18).toStdString() + banner ("welcome"));
}

TEST (LogFileSizeLimit, OfZeroDeletesTheOldFile)
{
    const TemporaryFolder folder;
    const auto file = folder.makeFile ("log");
    DefaultLogger logger;

    logger.openLogFile (file, "welcome", 0);

    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome"));
}

TEST (LogFileSizeLimit, ThatIsNegativeLeavesTheOldFileAlone)
{
    const TemporaryFolder folder;
    const auto file = folder.makeFile ("log");
    DefaultLogger logger;

    logger.openLogFile (file, "welcome", -1);

    EXPECT_EQ (withoutBannerTime (bytesOf (file)), "contents" + banner ("welcome"));
}

TEST (LogFileSizeLimit, DoesNotHoldDuringARun)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const Console console;
    LoggerWithoutStamps logger;
    logger.openLogFile (file, "welcome", 10);

    logger.log (Info, "message");

    EXPECT_EQ (withoutBannerTime (bytesOf (file)), banner ("welcome") + "[Info] message\r\n");
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

// Waits for the next moment that lies within these milliseconds of a second, and gives the stamp
// taken then. The clock may tick while the stamp is taken, and then it is taken anew.
static std::string stampBetween (int firstMillisecond, int lastMillisecond)
{
    const DefaultLogger logger;

    for (;;)
    {
        const auto before = juce::Time::getCurrentTime();
        const auto milliseconds = before.getMilliseconds();

        if (milliseconds < firstMillisecond || milliseconds > lastMillisecond)
        {
            juce::Thread::sleep ((1000 + firstMillisecond - milliseconds) % 1000);
            continue;
        }

        const auto stamp = logger.formatTimestamp();

        if (juce::Time::getCurrentTime() == before)
        {
            EXPECT_EQ (stamp.toStdString(), stampOf (before));
            return stamp.toStdString();
        }
    }
}

static size_t charactersOfMilliseconds (const std::string& stamp) { return stamp.find (']') - stamp.rfind (':') - 1; }

TEST (TimeStamp, TellsTheMillisecondsWithoutLeadingZeros)
{
    EXPECT_EQ (charactersOfMilliseconds (stampBetween (0, 9)), 1u);
    EXPECT_EQ (charactersOfMilliseconds (stampBetween (10, 99)), 2u);
    EXPECT_EQ (charactersOfMilliseconds (stampBetween (100, 999)), 3u);
}

TEST (TimeStamp, TellsTheLocalTimeOnceForAllItsParts)
{
    const DefaultLogger logger;

    for (int i = 0; i < 20000; ++i)
    {
        const auto before = juce::Time::getCurrentTime();
        const auto stamp = logger.formatTimestamp().toStdString();
        const auto after = juce::Time::getCurrentTime();

        auto time = before;

        while (time < after && stamp != stampOf (time))
            time += juce::RelativeTime::milliseconds (1);

        ASSERT_EQ (stamp, stampOf (time));
    }
}
