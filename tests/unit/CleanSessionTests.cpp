#include "Console.h"
#include "DisposableMachine.h"
#include "RecordingLogger.h"
#include "app/CleanSession.h"

#include <tuple>

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

/** All that comes of a session: its exit code, what it prints and what to the errors, and what it logs. */
using Session = std::tuple<int, std::string, std::string, Lines>;

class CleanCommand : public DisposableMachine
{
protected:
    /** Runs the command as the program's dispatcher does. */
    Session run (const juce::String& arguments, const std::string& input)
    {
        Console console (input);
        console.onRead = [&] { seenWhenAsked.push_back (console.visibleOutput()); };
        const auto exitCode = invoke (arguments);
        reachedTheEnd = std::cin.eof();
        console.onRead = {};
        std::getline (std::cin, notRead);
        return { exitCode, console.output(), console.errors(), logger.lines };
    }

    static int invoke (const juce::String& arguments)
    {
        return juce::ConsoleApplication::invokeCatchingFailures (
            [&]
            {
                cleanCommand (juce::ArgumentList ("OrvexCleaner", arguments));
                return 0;
            });
    }

    const juce::File content = sharedData.getChildFile ("TessaraWorks/Content");
    const juce::File logFile = juce::File::getSpecialLocation (juce::File::userDesktopDirectory)
                                   .getChildFile ("OrvexCleaner.log");

    const std::string banner = "================================================================\n"
                               "Orvex Cleaner\n"
                               "================================================================\n"
                               "\n";
    const std::string successAfterOneQuestion = banner + "Y/n? Cleaning finished successfully.\nLog file written to: "
                                              + pathOf (logFile) + "\nPress enter to exit\n";

    const std::string opened = "Opened " + pathOf (logFile)
                             + " with 'Orvex Cleaner session starting' and 5000000 bytes at level 0";
    const Lines contentDeclined { opened,
                                  "Info: Target: Content",
                                  "Info: Remove all Velantone content & playlist files?",
                                  "Info: Cleaning cancelled by the user." };

    SessionLogger logger;

    /** All that was visible whenever a line was asked for. */
    Lines seenWhenAsked;

    /** Whether it has read up to the end of the input. */
    bool reachedTheEnd = false;

    /** The line of the input behind those that the session has read. */
    std::string notRead;
};

TEST_F (CleanCommand, FailsWithoutATargetBeforeAnythingIsPrintedOrOpened)
{
    for (const auto* arguments :
         { "--clean", "--clean=", "--clean Content", "--clean= Content", "--clean --clean=All" })
        EXPECT_EQ (run (arguments, ""), Session (1, "", "Missing --clean argument\n", {})) << arguments;
}

TEST_F (CleanCommand, FailsWithAnUnknownTargetBeforeAnythingIsPrintedOrOpened)
{
    for (const std::string target :
         { "all", "ALL", "content", "Company", "Contents", "Conten", "All=All", "Orvex", "0" })
        EXPECT_EQ (run ("--clean=" + target, ""),
                   Session (1,
                            "",
                            "Invalid --clean target: " + target
                                + ". Valid targets are: OrvexStudio, ProductManager, VelantoneMediaServer, "
                                  "Content, All\n",
                            {}));
}

TEST_F (CleanCommand, TakesTheFirstOfTwoTargets)
{
    EXPECT_EQ (run ("--clean=Content --clean=All", "n\n\n"), Session (0, successAfterOneQuestion, "", contentDeclined));
}

TEST_F (CleanCommand, LogsTheTargetOffersItsProductAndEndsADeclinedRunAsASuccess)
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
        logger.lines.clear();
        logger.minimumLevel = Debug;

        EXPECT_EQ (run ("--clean=" + row.target, "n\n\n"),
                   Session (0,
                            successAfterOneQuestion,
                            "",
                            { opened, row.firstLine, row.question, "Info: Cleaning cancelled by the user." }));
    }
}

TEST_F (CleanCommand, OffersAllProductsForTheTargetAll)
{
    run ("--clean=All", "n\nn\nn\nn\nn\n\n");

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

    const Console console ("n\n\n");
    const Logger ownLogger (console);

    invoke ("--clean=Content");

    EXPECT_EQ (ownLogger.printed, banner);
}

TEST_F (CleanCommand, RaisesTheLevelToInfoBeforeTheFirstLine)
{
    std::vector<LogLevel> levels;
    logger.onLine = [&] (const std::string&) { levels.push_back (logger.minimumLevel); };

    run ("--clean=Content", "n\n\n");

    EXPECT_EQ (levels, std::vector<LogLevel> (3, Info));
}

TEST_F (CleanCommand, LeavesTheLevelOfALoggerAloneThatHasGoneWhileOpeningTheLogFile)
{
    struct Logger : SessionLogger
    {
        void openLogFile (const juce::File&, const juce::String&, juce::int64) override { getLogger() = nullptr; }
    };

    const Logger vanishing;

    EXPECT_EQ (run ("--clean=Content", "n\n\n"), Session (0, successAfterOneQuestion, "", {}));

    EXPECT_EQ (vanishing.minimumLevel, Debug);
    EXPECT_EQ (vanishing.lines, Lines {});
}

TEST_F (CleanCommand, EndsARunThatWentWellAsASuccess)
{
    makeFolder (content);

    EXPECT_EQ (run ("--clean=Content", "y\n\n"),
               Session (0,
                        successAfterOneQuestion,
                        "",
                        { opened,
                          "Info: Target: Content",
                          "Info: Remove all Velantone content & playlist files?",
                          "Info: Cleaning: Velantone Content",
                          "Info: Deleting directory: " + pathOf (content),
                          "Info: Directory deleted: " + pathOf (content),
                          "Info: Directories removed: 1",
                          "Info: Files removed: 0",
                          "Info: Velantone Content was successfully removed." }));
    EXPECT_FALSE (content.exists());
}

TEST_F (CleanCommand, ShowsTheWholeEndingAndThenWaitsForOneLine)
{
    run ("--clean=Content", "n\nany words before enter\nnext\n");

    EXPECT_EQ (seenWhenAsked, (Lines { banner + "Y/n? ", successAfterOneQuestion }));
    EXPECT_EQ (notRead, "next");
}

TEST_F (CleanCommand, EndsAtOnceAfterASuccessAtTheEndOfTheInput)
{
    EXPECT_EQ (run ("--clean=Content", "n\n"), Session (0, successAfterOneQuestion, "", contentDeclined));
    EXPECT_TRUE (reachedTheEnd);
}

TEST_F (CleanCommand, AdvisesTheUserAfterAFailureWithoutWaiting)
{
    makeUndeletableFolder (content);

    EXPECT_EQ (run ("--clean=Content", "y\nnext\n"),
               Session (1,
                        banner + "Y/n? ",
                        "\n"
                        "Product cleaning failed!\n"
                        "\n"
                        "Follow all instructions in the log entries above (if any), then retry.\n"
                        "If an entry failed to delete, ensure it is not open in another application.\n"
                        "If issues persist, send an email to: " ORVEX_CLEANER_SUPPORT_ADDRESS "\n"
                        "Attach the 'OrvexCleaner.log' file from your desktop to the email.\n"
                        "\n",
                        { opened,
                          "Info: Target: Content",
                          "Info: Remove all Velantone content & playlist files?",
                          "Info: Cleaning: Velantone Content",
                          "Info: Deleting directory: " + pathOf (content),
                          "Critical: Unable to delete directory: " + pathOf (content),
                          "Info: Directories removed: 0",
                          "Info: Files removed: 0",
                          "Info: Velantone Content encountered errors and could not be removed." }));
    EXPECT_EQ (notRead, "next");
}

TEST_F (CleanCommand, GoesOnWithoutALoggerAndThenMakesNoLogFile)
{
    makeFolder (content);
    logFile.deleteFile();
    getLogger() = nullptr;

    EXPECT_EQ (run ("--clean=Content", "y\n\n"), Session (0, successAfterOneQuestion, "", {}));
    EXPECT_FALSE (content.exists());
    EXPECT_FALSE (logFile.exists());
    EXPECT_EQ (getLogger(), nullptr);
}
