// Checks which command and which target the arguments choose. The input is the arguments,
// separated by NULs.

#include "../shared/Products.h"
#include "AllCommands.h"
#include "Console.h"
#include "Expect.h"
#include "app/ShortOptions.h"
#include "app/Targets.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

using namespace TessaraWorks;

//  The program

static std::string chosenTarget (const juce::ArgumentList& args)
{
    const Console console;
    std::string target;

    const auto exitCode = juce::ConsoleApplication::invokeCatchingFailures (
        [&]
        {
            target = getTarget (args).value;
            return 0;
        });

    return exitCode == 0 ? target : std::to_string (exitCode) + ": " + console.errors();
}

static std::string programsChoice (std::vector<std::string> arguments)
{
    std::vector<char*> argv;

    for (auto& argument : arguments)
        argv.push_back (argument.data());

    const auto args = withPlainShortOptions (juce::ArgumentList (static_cast<int> (argv.size()), argv.data()));
    const auto* command = consoleApplication.findCommand (args, false);

    if (command->commandOption == "--clean")
        return "--clean " + chosenTarget (args);

    return command->commandOption.isEmpty() ? "default" : command->commandOption.toStdString();
}

//  The model

static bool isWhitespace (char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
static bool isQuote (char c) { return c == '"' || c == '\''; }

// JUCE trims an argument and removes a leading quote, with its closing one if there is one.
static std::string asJuceTakesIt (std::string argument)
{
    argument.erase (argument.begin(), std::find_if_not (argument.begin(), argument.end(), isWhitespace));
    argument.erase (std::find_if_not (argument.rbegin(), argument.rend(), isWhitespace).base(), argument.end());

    if (! argument.empty() && isQuote (argument.front()))
    {
        argument.erase (0, 1);

        if (! argument.empty() && isQuote (argument.back()))
            argument.pop_back();
    }

    return argument;
}

static bool isLongOption (const std::string& argument, const std::string& option)
{
    return argument.substr (0, argument.find ('=')) == option;
}

static bool isShortOption (const std::string& argument, char letter)
{
    return argument[0] == '-' && argument[1] != '-' && argument.find (letter) != std::string::npos;
}

// JUCE reads each byte of an argument as a character.
static std::string utf8 (const std::string& latin1)
{
    std::string text;

    for (const auto c : latin1)
    {
        const auto byte = static_cast<unsigned char> (c);

        if (byte >= 0x80)
            text += static_cast<char> (0xc0 | (byte >> 6));

        text += static_cast<char> (byte >= 0x80 ? 0x80 | (byte & 0x3f) : byte);
    }

    return text;
}

static std::string modelsTarget (const std::string& cleanArgument)
{
    const auto equals = cleanArgument.find ('=');
    const auto value = equals == std::string::npos ? "" : cleanArgument.substr (equals + 1);

    if (value.empty())
        return "1: Missing --clean argument\n";

    if (std::find (std::begin (targetNames), std::end (targetNames), value) != std::end (targetNames))
        return value;

    const juce::StringArray names (targetNames, juce::numElementsInArray (targetNames));
    return "1: Invalid --clean target: " + utf8 (value)
         + ". Valid targets are: " + names.joinIntoString (", ").toStdString() + "\n";
}

static std::string modelsChoice (const std::vector<std::string>& arguments)
{
    std::vector<std::string> taken;
    std::transform (std::next (arguments.begin()), arguments.end(), std::back_inserter (taken), asJuceTakesIt);

    const auto isHelp = [] (const auto& a) { return isLongOption (a, "--help") || isShortOption (a, 'h'); };
    const auto isVersion = [] (const auto& a) { return isLongOption (a, "--version") || isShortOption (a, 'v'); };
    const auto isClean = [] (const auto& a) { return isLongOption (a, "--clean"); };

    if (std::any_of (taken.begin(), taken.end(), isHelp))
        return "--help|-h";

    if (std::any_of (taken.begin(), taken.end(), isVersion))
        return "--version|-v";

    const auto clean = std::find_if (taken.begin(), taken.end(), isClean);
    return clean == taken.end() ? "default" : "--clean " + modelsTarget (*clean);
}

int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    static const bool isReady = (addAllCommands(), true);
    (void)isReady;

    auto arguments = split (std::string (data, data + size), '\0');
    arguments.insert (arguments.begin(), "OrvexCleaner");

    expectEqual ("The choice", programsChoice (arguments), modelsChoice (arguments));
    return 0;
}
