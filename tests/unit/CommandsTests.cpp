#include "AllCommands.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (Commands, HaveTheirOrderAndTexts)
{
    addAllCommands();
    juce::StringArray texts;

    for (const auto& command : consoleApplication.getCommands())
        texts.addArray (
            { command.commandOption, command.argumentDescription, command.shortDescription, command.longDescription });

    consoleApplication = {};

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

TEST (CleanAllCommand, PassesOnThePathOfTheExecutable)
{
    juce::ArgumentList args ("", juce::String());
    consoleApplication.addCommand ({ "--clean", {}, {}, {}, [&] (const juce::ArgumentList& given) { args = given; } });

    cleanAllCommand (juce::ArgumentList ("some name", juce::String ("some arguments")));
    consoleApplication = {};

    EXPECT_EQ (args.executableName,
               juce::File::getSpecialLocation (juce::File::currentExecutableFile).getFullPathName());
    ASSERT_EQ (args.size(), 1);
    EXPECT_EQ (args[0].text, "--clean=All");
}
