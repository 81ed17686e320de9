#include "LiveTexts.h"
#include "RecordingLogger.h"
#include "TestLogger.h"
#include "logging/Log.h"

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>

using namespace TessaraWorks;

TEST (LogInterface, BeginsWithItsDefaultSettings)
{
    const DefaultLogger logger {};

    EXPECT_EQ (logger.minimumLevel, Debug);
    EXPECT_TRUE (logger.showTimestamps);
    EXPECT_FALSE (logger.spareFlag);
    EXPECT_FALSE (logger.logAllToFile);
}

TEST (LogInterface, DoesNothingInItsOwnCloseLogFile)
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

TEST (ProcessWideLogger, ReceivesEachLoggedMessage)
{
    const RecordingLogger logger;

    log (Debug, "one");
    log (Critical, "two");

    EXPECT_EQ (logger.lines, (Lines { "Debug: one", "Critical: two" }));
}

TEST (ProcessWideLogger, DropsMessagesWhileThereIsNone)
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

    const auto line = logger.console.output().substr (0, logger.console.output().size() - 1);
    EXPECT_EQ (withoutTimes (line), "[time][Info] message");
    EXPECT_NE (TestLogger::bytesOf (logger.file).find ("\r\n" + line + "\r\n"), std::string::npos);
}

TEST (LogLine, HasTheMessageUnchanged)
{
    const std::string messages[] = {
        "",
        "first\nsecond\r\nthird",
        " \t two  spaces and a line end \r\n",
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

// A minimum level with the lines that pass it, logAllToFile, showTimestamps, spareFlag, whether there is a file.
using LogSettings = testing::TestWithParam<std::tuple<std::pair<LogLevel, const char*>, bool, bool, bool, bool>>;

TEST_P (LogSettings, DecideWhereEachLevelGoes)
{
    const auto& [level, logAllToFile, showTimestamps, spareFlag, hasFile] = GetParam();
    const auto& [minimumLevel, passed] = level;

    TestLogger logger;
    logger.minimumLevel = minimumLevel;
    logger.logAllToFile = logAllToFile;
    logger.showTimestamps = showTimestamps;
    logger.spareFlag = spareFlag;

    if (hasFile)
        logger.open();

    for (const auto levelOfLine : { -1, 0, 1, 2, 3, 4 })
        logger.log (levelOfLine, "at " + juce::String (levelOfLine));

    const juce::String tag (showTimestamps ? "[time][" : "[");
    const auto shown = juce::String (passed).replace ("[", tag);
    const auto filed = juce::String (logAllToFile ? allLevels : passed).replace ("[", tag).replace ("\n", "\r\n");

    EXPECT_EQ (logger.shown(), shown.toStdString());
    EXPECT_EQ (logger.filed(), hasFile ? banner ("welcome") + filed.toStdString() : "");
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
        testing::Bool(),
        testing::Bool(),
        testing::Bool()));

TEST (LogFilter, DoesNotFormatADroppedMessage)
{
    TestLogger logger;
    logger.minimumLevel = Info;
    const juce::String message ("dropped");

    const auto textsBefore = countTextsMade();
    logger.log (Debug, message);

    EXPECT_EQ (countTextsMade(), textsBefore);
}

TEST (LogFilter, TakesEffectWithTheNextMessage)
{
    TestLogger logger;

    logger.log (Debug, "before");
    logger.minimumLevel = Info;
    logger.log (Debug, "after");

    EXPECT_EQ (logger.shown(), "[Debug] before\n");
}

TEST (LogFilter, ReadsTheMinimumLevelOncePerMessage)
{
    TestLogger logger;
    logger.open();
    logger.console.onFlush = [&] { logger.minimumLevel = Critical; };

    logger.log (Info, "message");

    EXPECT_EQ (logger.shown(), "[Info] message\n");
    EXPECT_EQ (logger.filed(), banner ("welcome") + "[Info] message\r\n");
}

TEST (LoggerWrite, PrintsTheBareTextOnTheConsoleOnlyAndFlushesIt)
{
    TestLogger logger;
    logger.minimumLevel = 100;
    logger.showTimestamps = true;
    logger.logAllToFile = true;
    logger.open();

    logger.write (" \ttext \r\n");
    logger.write ({});

    EXPECT_EQ (logger.console.visibleOutput(), " \ttext \r\n\n\n");
    EXPECT_EQ (logger.filed(), banner ("welcome"));
}

TEST (LoggerConsole, ShowsALineBeforeItGoesToTheFile)
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

// Yields to other threads after each character.
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

TEST (LoggerConsole, KeepsTheLinesOfTwoThreadsWhole)
{
    TestLogger logger;
    SlowConsole buffer;
    std::cout.rdbuf (&buffer);

    std::atomic<int> ready { 0 };
    const auto repeat = [&] (const auto& action)
    {
        for (++ready; ready < 2;)
            std::this_thread::yield();

        for (int i = 0; i < 200; ++i)
            action();
    };

    std::thread other ([&] { repeat ([&] { logger.log (Info, "abcdefghijklmnopqrstuvwxyz"); }); });
    repeat ([&] { logger.write ("0123456789"); });
    other.join();

    std::istringstream lines (buffer.text());
    std::map<std::string, int> counts;

    for (std::string line; std::getline (lines, line);)
        ++counts[line];

    EXPECT_EQ (counts,
               (std::map<std::string, int> { { "[Info] abcdefghijklmnopqrstuvwxyz", 200 }, { "0123456789", 200 } }));
}

TEST (LogFile, IsIndependentOfJucesCurrentLogger)
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

TEST (LogFile, GetsASecondBannerWhenItIsOpenedAgainAndNothingAfterAnotherOneIsOpened)
{
    TestLogger logger;
    const auto second = logger.folder.getChildFile ("second");

    logger.openLogFile (logger.file, "one", 5000000);
    logger.log (Info, "1");
    logger.openLogFile (logger.file, "two", 5000000);
    logger.log (Info, "2");
    logger.openLogFile (second, "three", noLimit);
    logger.log (Info, "3");

    EXPECT_EQ (logger.filed(), banner ("one") + "[Info] 1\r\n" + banner ("two") + "[Info] 2\r\n");
    EXPECT_EQ (TestLogger::filed (second), banner ("three") + "[Info] 3\r\n");
    EXPECT_EQ (logger.getLogFilePath(), second.getFullPathName());
}

TEST (LogFile, HasAPathAndGetsLinesOnlyWhileItIsOpenAndCanBeClosedAtAnyTime)
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

    logger.log (Info, "message");

    EXPECT_EQ (logger.filed(), banner ("welcome"));
    EXPECT_EQ (logger.shown(), "[Info] message\n");
}

TEST (LogFile, LosesOnlyTheLinesThatCannotBeWritten)
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

TEST (LogFileSizeLimit, CutsALongerFileAtTheFirstLineEndWithinTheLimit)
{
    const std::pair<juce::int64, std::string> rows[] = {
        { -1, "one\r\ntwo\r\nthree\r\n" },
        { 17, "one\r\ntwo\r\nthree\r\n" }, // exactly the file's size
        { 16, "\r\ntwo\r\nthree\r\n" },
        { 0, "" },
    };

    for (const auto& [limit, kept] : rows)
    {
        SCOPED_TRACE (limit);
        TestLogger logger;
        logger.file.replaceWithText ("one\r\ntwo\r\nthree\r\n");

        logger.openLogFile (logger.file, "welcome", limit);

        EXPECT_EQ (logger.filed(), kept + banner ("welcome"));
        EXPECT_EQ (logger.file.getParentDirectory().getNumberOfChildFiles (juce::File::findFilesAndDirectories), 1);
    }
}
