#include "Console.h"
#include "DisposableMachine.h"
#include "RecordingLogger.h"
#include "app/CleanSession.h"

using namespace TessaraWorks;

class CleanCommand : public DisposableMachine
{
protected:
    static void run() { cleanCommand (juce::ArgumentList ("OrvexCleaner", juce::String ("--clean=Content"))); }

    const juce::File content = sharedData.getChildFile ("TessaraWorks/Content");
    const juce::File logFile = juce::File::getSpecialLocation (juce::File::userDesktopDirectory)
                                   .getChildFile ("OrvexCleaner.log");

    const std::string banner = "================================================================\n"
                               "Orvex Cleaner\n"
                               "================================================================\n"
                               "\n";
    const std::string shownOnSuccess = banner + "Y/n? Cleaning finished successfully.\nLog file written to: "
                                     + pathOf (logFile) + "\nPress enter to exit\n";
    const std::string opened = "Opened " + pathOf (logFile)
                             + " with 'Orvex Cleaner session starting' and 5000000 bytes";

    RecordingLogger logger;
    Console console { "y\n\n" };
};

TEST_F (CleanCommand, OpensTheLogFileAfterTheBannerAndRaisesTheLevelBeforeTheFirstLine)
{
    Lines shown;
    std::vector<LogLevel> levels;
    logger.onLine = [&] (const std::string&)
    {
        shown.push_back (console.output());
        levels.push_back (logger.minimumLevel);
    };

    run();

    EXPECT_EQ (shown.front(), banner);
    EXPECT_EQ (levels, (std::vector<LogLevel> { Debug, Info, Info, Info, Info, Info, Info, Info }));
}

TEST_F (CleanCommand, LeavesTheLevelOfALoggerThatIsClearedWhileTheLogFileOpens)
{
    logger.onLine = [] (const std::string&) { getLogger() = nullptr; };

    run();

    EXPECT_EQ (console.output(), shownOnSuccess);
    EXPECT_EQ (logger.minimumLevel, Debug);
    EXPECT_EQ (logger.lines, Lines { opened });
}

TEST_F (CleanCommand, FailsWithoutWaitingForTheUser)
{
    makeUndeletableFolder (content);
    int reads = 0;
    console.onRead = [&] { ++reads; };

    const auto runAndSucceed = []
    {
        run();
        return 0;
    };
    EXPECT_EQ (juce::ConsoleApplication::invokeCatchingFailures (runAndSucceed), 1);

    EXPECT_EQ (reads, 1); // the answer only
    EXPECT_EQ (console.output(), banner + "Y/n? ");
}

TEST_F (CleanCommand, WorksWithoutALoggerAndThenMakesNoLogFile)
{
    makeFolder (content);
    logFile.deleteFile();
    getLogger() = nullptr;

    run();

    EXPECT_EQ (console.output(), shownOnSuccess);
    EXPECT_FALSE (content.exists());
    EXPECT_FALSE (logFile.exists());
    EXPECT_EQ (getLogger(), nullptr);
}
