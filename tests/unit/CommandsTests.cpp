#include "AllCommands.h"
#include "Console.h"
#include "DisposableMachine.h"
#include "RecordingLogger.h"

using namespace TessaraWorks;

class Commands : public DisposableMachine
{
protected:
    static void SetUpTestSuite() { numCommandsAtStart = consoleApplication.getCommands().size(); }

    void SetUp() override
    {
        DisposableMachine::SetUp();
        consoleApplication = {};
        addAllCommands();
    }

    static void TearDownTestSuite() { consoleApplication = {}; }

    // The place in the list of the command that an invocation runs.
    static int chosenFor (const juce::String& arguments)
    {
        const auto& commands = consoleApplication.getCommands();
        const auto* chosen = consoleApplication.findCommand (juce::ArgumentList ("OrvexCleaner", arguments), false);

        for (int i = 0; i < static_cast<int> (commands.size()); ++i)
            if (chosen == &commands[static_cast<size_t> (i)])
                return i;

        return -1;
    }

    static inline size_t numCommandsAtStart = 0;
};

constexpr int help = 0;
constexpr int version = 1;
constexpr int cleanAllProducts = 2;
constexpr int cleanOneTarget = 3;

TEST_F (Commands, AreNoneAtTheStart) { EXPECT_EQ (numCommandsAtStart, 0u); }

TEST_F (Commands, AreTwoBesideHelpAndVersion)
{
    consoleApplication = {};
    registerCommands();

    const auto& commands = consoleApplication.getCommands();
    ASSERT_EQ (commands.size(), 2u);
    EXPECT_EQ (commands[0].commandOption, "");
    EXPECT_EQ (commands[1].commandOption, "--clean");
}

TEST_F (Commands, StandInTheirOrderWithTheirTexts)
{
    juce::StringArray texts;

    for (const auto& command : consoleApplication.getCommands())
        texts.addArray (
            { command.commandOption, command.argumentDescription, command.shortDescription, command.longDescription });

    EXPECT_EQ (texts,
               juce::StringArray ({ "--help|-h",
                                    "--help|-h",
                                    "Prints the list of commands",
                                    "",

                                    "--version|-v",
                                    "--version|-v",
                                    "Prints the current version number",
                                    "",

                                    "",
                                    "",
                                    "Completely cleans out all Tessara Works products from the system.",
                                    "Completely cleans out all Tessara Works products from the system.",

                                    "--clean",
                                    "--clean",
                                    "Cleans out a product from the system [usage]: --clean={PRODUCT_NAME}",
                                    "Cleans out the target product from the local system for the current user." }));
}

TEST_F (Commands, CleanAllProductsUnlessToldOtherwise)
{
    for (const auto* arguments :
         { "", "heavy", "--clear=All", "--CLEAN=All", "--HELP", "--Version", "clean=All", "--cleaning" })
        EXPECT_EQ (chosenFor (arguments), cleanAllProducts) << arguments;
}

TEST_F (Commands, MatchTheirOptionsAtAnyPositionAndPreferHelpToVersionAndVersionToCleaning)
{
    const std::pair<juce::String, int> rows[] = {
        { "--help", help },
        { "-h", help },
        { "--version", version },
        { "-v", version },
        { "--clean", cleanOneTarget },
        { "--clean=Content", cleanOneTarget },
        { "word --other --clean=Content", cleanOneTarget },
        { "--clean=All --version", version },
        { "--clean=Content -h", help },
        { "--clean=Content --version --help", help },
    };

    for (const auto& [arguments, command] : rows)
        EXPECT_EQ (chosenFor (arguments), command) << arguments;
}

TEST_F (Commands, RunASessionOverAllProductsByDefault)
{
    const RecordingLogger logger;
    const Console console ("n\nn\nn\nn\nn\n\n");

    EXPECT_EQ (consoleApplication.findAndRunCommand (juce::ArgumentList ("OrvexCleaner", juce::String()), false), 0);

    ASSERT_EQ (logger.lines.size(), 12u);
    EXPECT_EQ (logger.lines[0], "Info: Target: All");
    EXPECT_EQ (logger.lines[1], "Info: All installed Orvex & Velantone products will be cleaned.");
    EXPECT_EQ (console.output().substr (0, 64), std::string (64, '='));
}

TEST_F (Commands, GiveBackAFailureOfASessionOverAllProductsOnlyIfItWasAskedFor)
{
    makeUndeletableFolder (sharedData.getChildFile ("TessaraWorks/Content"));
    const RecordingLogger logger;

    const auto run = [] (const juce::String& arguments, std::string& errors)
    {
        const Console console ("n\ny\nn\nn\nn\n");
        const auto code = consoleApplication.findAndRunCommand (juce::ArgumentList ("OrvexCleaner", arguments), false);
        errors = console.errors();
        return code;
    };

    std::string errorsByDefault, errorsWhenAskedFor;
    EXPECT_EQ (run ("", errorsByDefault), 0);
    EXPECT_EQ (run ("--clean=All", errorsWhenAskedFor), 1);

    EXPECT_EQ (errorsByDefault.substr (0, 26), "\nProduct cleaning failed!\n");
    EXPECT_EQ (errorsByDefault, errorsWhenAskedFor);
}
