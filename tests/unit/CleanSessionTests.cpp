#include "Console.h"
#include "DisposableMachine.h"
#include "RecordingLogger.h"
#include "app/CleanSession.h"

using namespace TessaraWorks;

// Notes what becomes of the log file among the lines that are logged.
class SessionLogger : public RecordingLogger
{
public:
    void openLogFile (const juce::File& file, const juce::String& welcomeMessage, juce::int64 limit) override
    {
        lines.push_back ("Opened " + pathOf (file) + " with '" + welcomeMessage.toStdString() + "' and "
                         + std::to_string (limit) + " bytes at level " + std::to_string (minimumLevel));
    }

    void closeLogFile() override { lines.push_back ("Closed"); }
};

class CleanCommand : public DisposableMachine
{
protected:
    // Runs the command as the program's dispatcher does, and gives the exit code.
    static int run (const juce::String& arguments)
    {
        return juce::ConsoleApplication::invokeCatchingFailures (
            [&]
            {
                cleanCommand (juce::ArgumentList ("OrvexCleaner", arguments));
                return 0;
            });
    }

    const juce::File logFile = juce::File::getSpecialLocation (juce::File::userDesktopDirectory)
                                   .getChildFile ("OrvexCleaner.log");
    const std::string logFilePath = pathOf (logFile);
    const std::string opened = "Opened " + logFilePath
                             + " with 'Orvex Cleaner session starting' and 5000000 bytes at level 0";
};

static const std::string banner = "================================================================\n"
                                  "Orvex Cleaner\n"
                                  "================================================================\n"
                                  "\n";

TEST_F (CleanCommand, FailsWithoutATargetBeforeAnythingIsPrintedOrOpened)
{
    for (const auto* arguments :
         { "--clean", "--clean=", "--clean Content", "--clean= Content", "--clean --clean=All" })
    {
        SCOPED_TRACE (arguments);
        const SessionLogger logger;
        const Console console;

        EXPECT_EQ (run (arguments), 1);
        EXPECT_EQ (console.errors(), "Missing --clean argument\n");
        EXPECT_EQ (console.output(), "");
        EXPECT_EQ (logger.lines, Lines {});
    }
}

TEST_F (CleanCommand, FailsWithAnUnknownTargetBeforeAnythingIsPrintedOrOpened)
{
    for (const auto* target : { "all", "ALL", "content", "Company", "Contents", "Conten", "All=All", "Orvex", "0" })
    {
        SCOPED_TRACE (target);
        const SessionLogger logger;
        const Console console;

        EXPECT_EQ (run (juce::String ("--clean=") + target), 1);
        EXPECT_EQ (console.errors(),
                   "Invalid --clean target: " + std::string (target)
                       + ". Valid targets are: OrvexStudio, ProductManager, VelantoneMediaServer, Content, All\n");
        EXPECT_EQ (console.output(), "");
        EXPECT_EQ (logger.lines, Lines {});
    }
}

TEST_F (CleanCommand, TakesTheFirstOfTwoTargets)
{
    const SessionLogger logger;
    const Console console ("n\n\n");

    EXPECT_EQ (run ("--clean=Content --clean=All"), 0);
    EXPECT_EQ (logger.lines,
               (Lines { opened,
                        "Info: Target: Content",
                        "Info: Remove all Velantone content & playlist files?",
                        "Info: Cleaning cancelled by the user." }));
}

TEST_F (CleanCommand, LogsTheTargetAndOffersItsProduct)
{
    struct Row
    {
        std::string target;
        std::string firstLine;
        std::string question;
    };

    const Row rows[] = {
        { "OrvexStudio", "Info: Target: Orvex Studio", "Info: Remove Orvex Studio and all of its associated files?" },
        { "ProductManager",
          "Info: Target: Orvex Product Manager",
          "Info: Remove Orvex Product Manager and all of its associated files?" },
        { "VelantoneMediaServer",
          "Info: Target: Velantone Media Server",
          "Info: Remove Velantone Media Server and all of its associated files?" },
        { "Content", "Info: Target: Content", "Info: Remove all Velantone content & playlist files?" },
    };

    for (const auto& row : rows)
    {
        const SessionLogger logger;
        const Console console ("n\n\n");

        EXPECT_EQ (run ("--clean=" + row.target), 0);
        EXPECT_EQ (logger.lines,
                   (Lines { opened, row.firstLine, row.question, "Info: Cleaning cancelled by the user." }));
    }
}

TEST_F (CleanCommand, OffersAllProductsForTheTargetAll)
{
    const SessionLogger logger;
    const Console console ("n\nn\nn\nn\nn\n\n");

    EXPECT_EQ (run ("--clean=All"), 0);
    EXPECT_EQ (logger.lines,
               (Lines { opened,
                        "Info: Target: All",
                        "Info: All installed Orvex & Velantone products will be cleaned.",
                        "Info: Remove Orvex Studio and all of its associated files?",
                        "Info: Cleaning cancelled by the user.",
                        "Info: Remove all Velantone content & playlist files?",
                        "Info: Cleaning cancelled by the user.",
                        "Info: Remove Velantone Media Server and all of its associated files?",
                        "Info: Cleaning cancelled by the user.",
                        "Info: Remove Orvex Product Manager and all of its associated files?",
                        "Info: Cleaning cancelled by the user.",
                        "Info: Remove all Tessara Works global directories and files?",
                        "Info: Cleaning cancelled by the user." }));
}

TEST_F (CleanCommand, PrintsTheBannerBeforeItOpensTheLogFile)
{
    const Console console ("n\n\n");

    struct Logger : SessionLogger
    {
        explicit Logger (const Console& consoleToSee)
            : seen (consoleToSee)
        {
        }

        void openLogFile (const juce::File&, const juce::String&, juce::int64) override { printed = seen.output(); }

        const Console& seen;
        std::string printed;
    };

    const Logger logger (console);

    run ("--clean=Content");

    EXPECT_EQ (logger.printed, banner);
}

TEST_F (CleanCommand, RaisesTheLevelToInfoBeforeTheFirstLine)
{
    SessionLogger logger;
    const Console console ("n\n\n");
    std::vector<LogLevel> levels;
    logger.onLine = [&] (const std::string&) { levels.push_back (logger.minimumLevel); };

    run ("--clean=Content");

    EXPECT_EQ (levels, std::vector<LogLevel> (3, Info));
}

TEST_F (CleanCommand, LeavesTheLevelOfALoggerAloneThatHasGoneWhileOpeningTheLogFile)
{
    struct Logger : SessionLogger
    {
        void openLogFile (const juce::File&, const juce::String&, juce::int64) override { getLogger() = nullptr; }
    };

    const Logger logger;
    const Console console ("n\n\n");

    EXPECT_EQ (run ("--clean=Content"), 0);

    EXPECT_EQ (logger.minimumLevel, Debug);
    EXPECT_EQ (logger.lines, Lines {});
}

TEST_F (CleanCommand, EndsADeclinedRunAsASuccess)
{
    const SessionLogger logger;
    const Console console ("n\n\n");

    EXPECT_EQ (run ("--clean=Content"), 0);
    EXPECT_EQ (console.output(),
               banner + "Y/n? Cleaning finished successfully.\nLog file written to: " + logFilePath
                   + "\nPress enter to exit\n");
    EXPECT_EQ (console.errors(), "");
}

TEST_F (CleanCommand, EndsARunThatWentWellAsASuccess)
{
    const auto content = makeFolder (sharedData.getChildFile ("TessaraWorks/Content"));
    const SessionLogger logger;
    const Console console ("y\n\n");

    EXPECT_EQ (run ("--clean=Content"), 0);
    EXPECT_FALSE (content.exists());
    EXPECT_EQ (console.output(),
               banner + "Y/n? Cleaning finished successfully.\nLog file written to: " + logFilePath
                   + "\nPress enter to exit\n");
    EXPECT_EQ (console.errors(), "");
    EXPECT_EQ (logger.lines,
               (Lines { opened,
                        "Info: Target: Content",
                        "Info: Remove all Velantone content & playlist files?",
                        "Info: Cleaning: Velantone Content",
                        "Info: Deleting directory: " + pathOf (content),
                        "Info: Directory deleted: " + pathOf (content),
                        "Info: Directories removed: 1",
                        "Info: Files removed: 0",
                        "Info: Velantone Content was successfully removed." }));
}

TEST_F (CleanCommand, WaitsForOneLineAfterASuccess)
{
    const SessionLogger logger;
    const Console console ("n\nany words before enter\nnext\n");

    run ("--clean=Content");

    std::string next;
    std::getline (std::cin, next);
    EXPECT_EQ (next, "next");
}

TEST_F (CleanCommand, ShowsTheWholeEndingBeforeItWaits)
{
    const SessionLogger logger;
    Console console ("n\n\n");
    std::string seen;
    console.onRead = [&] { seen = console.visibleOutput(); };

    run ("--clean=Content");

    EXPECT_EQ (seen,
               banner + "Y/n? Cleaning finished successfully.\nLog file written to: " + logFilePath
                   + "\nPress enter to exit\n");
}

TEST_F (CleanCommand, EndsAtOnceAfterASuccessAtTheEndOfTheInput)
{
    const SessionLogger logger;
    const Console console ("n\n");

    EXPECT_EQ (run ("--clean=Content"), 0);
    EXPECT_TRUE (std::cin.eof());
}

TEST_F (CleanCommand, AdvisesTheUserAfterAFailureWithoutWaiting)
{
    const auto content = makeUndeletableFolder (sharedData.getChildFile ("TessaraWorks/Content"));
    const SessionLogger logger;
    const Console console ("y\nnext\n");

    EXPECT_EQ (run ("--clean=Content"), 1);
    EXPECT_EQ (console.output(), banner + "Y/n? ");
    EXPECT_EQ (console.errors(),
               "\n"
               "Product cleaning failed!\n"
               "\n"
               "Follow all instructions in the log entries above (if any), then retry.\n"
               "If an entry failed to delete, ensure it is not open in another application.\n"
               "If issues persist, send an email to: " ORVEX_CLEANER_SUPPORT_ADDRESS "\n"
               "Attach the 'OrvexCleaner.log' file from your desktop to the email.\n"
               "\n");
    EXPECT_EQ (logger.lines,
               (Lines { opened,
                        "Info: Target: Content",
                        "Info: Remove all Velantone content & playlist files?",
                        "Info: Cleaning: Velantone Content",
                        "Info: Deleting directory: " + pathOf (content),
                        "Critical: Unable to delete directory: " + pathOf (content),
                        "Info: Directories removed: 0",
                        "Info: Files removed: 0",
                        "Info: Velantone Content encountered errors and could not be removed." }));

    std::string next;
    std::getline (std::cin, next);
    EXPECT_EQ (next, "next");
}

TEST_F (CleanCommand, GoesOnWithoutALoggerAndThenMakesNoLogFile)
{
    const auto content = makeFolder (sharedData.getChildFile ("TessaraWorks/Content"));
    const RecordingLogger restoresTheLogger;
    const Console console ("y\n\n");
    logFile.deleteFile();
    getLogger() = nullptr;

    EXPECT_EQ (run ("--clean=Content"), 0);
    EXPECT_FALSE (content.exists());
    EXPECT_FALSE (logFile.exists());
    EXPECT_EQ (getLogger(), nullptr);
    EXPECT_EQ (console.output(),
               banner + "Y/n? Cleaning finished successfully.\nLog file written to: " + logFilePath
                   + "\nPress enter to exit\n");
}
