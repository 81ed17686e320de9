// Checks the answers at the prompt. The input is the whole standard input. The program asks until
// it has read all of it, and twice after its end.

#include "Console.h"
#include "Expect.h"
#include "RecordingLogger.h"
#include "cleaning/ConfirmWithUser.h"

#include <iostream>
#include <string>

static const std::string never = "asks without end";

//  The program

struct NeverEnds
{
};

static std::string programsDialogue (const Console& console)
{
    const RecordingLogger logger;
    const auto shownBefore = console.output().size();

    try
    {
        const auto answer = TessaraWorks::confirmWithUser() ? "yes" : "no";
        auto dialogue = console.output().substr (shownBefore);

        for (const auto& line : logger.lines)
            dialogue += "[" + line + "] ";

        return dialogue + answer;
    }
    catch (const NeverEnds&)
    {
        return never;
    }
}

//  The model

struct Input
{
    std::string text;
    size_t position = 0;
    bool hasEnded = false;

    void readInto (std::string& line)
    {
        if (hasEnded)
            return;

        const auto lineFeed = text.find ('\n', position);
        hasEnded = lineFeed == std::string::npos;
        line = text.substr (position, hasEnded ? std::string::npos : lineFeed - position);
        position = hasEnded ? text.size() : lineFeed + 1;
    }
};

static std::string modelsDialogue (Input& input)
{
    std::string dialogue;
    std::string line;

    for (;;)
    {
        const auto hadEnded = input.hasEnded;
        dialogue += "Y/n? ";
        input.readInto (line);

        if (line.empty() || line == "y" || line == "Y")
            return dialogue + "yes";

        if (line == "n" || line == "N")
            return dialogue + "[Info: Cleaning cancelled by the user.] no";

        if (hadEnded)
            return never;
    }
}

int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    Input model { { data, data + size } };
    Console console (model.text);
    auto promptsLeft = size + 4; // at most one for each line, and those after the end
    console.onFlush = [&]
    {
        if (promptsLeft-- == 0)
            throw NeverEnds();
    };
    std::cout.exceptions (std::ios::badbit); // lets the exception through

    for (int askingsAfterEnd = 0; askingsAfterEnd < 2;)
    {
        askingsAfterEnd += model.hasEnded ? 1 : 0;

        const auto expected = modelsDialogue (model);
        expectEqual ("The dialogue", programsDialogue (console), expected);

        if (expected == never)
            break;
    }

    std::cout.exceptions (std::ios::goodbit);
    return 0;
}
