// The answers at the prompt. The input is the whole standard input, which the program asks as often
// as there is something left, and twice after its end.

#include "Expect.h"
#include "RecordingLogger.h"
#include "cleaning/ConfirmWithUser.h"

#include <iostream>
#include <sstream>
#include <string>

struct NeverEnds
{
};

/** A console that ends the asking at some point. */
class BoundedConsole : public std::stringbuf
{
public:
    explicit BoundedConsole (size_t mostPrompts)
        : promptsLeft (mostPrompts)
    {
    }

private:
    std::streamsize xsputn (const char* text, std::streamsize length) override
    {
        if (promptsLeft-- == 0)
            throw NeverEnds();

        return std::stringbuf::xsputn (text, length);
    }

    size_t promptsLeft;
};

/** Sends std::cout to a console while it lives, and lets the console's exception through. */
class Redirection
{
public:
    explicit Redirection (BoundedConsole& console)
        : previous (std::cout.rdbuf (&console))
    {
        std::cout.exceptions (std::ios::badbit);
    }

    ~Redirection()
    {
        std::cout.exceptions (std::ios::goodbit);
        std::cout.rdbuf (previous);
    }

    Redirection (const Redirection&) = delete;
    Redirection& operator= (const Redirection&) = delete;

private:
    std::streambuf* const previous;
};

struct Asking
{
    std::string output;
    std::string end; // yes, no, or never
};

//  The program

static Asking ask (size_t mostPrompts)
{
    RecordingLogger logger;
    BoundedConsole console (mostPrompts);
    const Redirection redirection (console);

    try
    {
        const auto isYes = TessaraWorks::confirmWithUser();
        const auto log = logger.lines.empty() ? "" : logger.lines.front();

        return { console.str(), (isYes ? "yes, " : "no, ") + std::to_string (logger.lines.size()) + " lines " + log };
    }
    catch (const NeverEnds&)
    {
        return { {}, "never" };
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

static Asking modelsAsking (Input& input)
{
    Asking asking;
    std::string line;

    for (;;)
    {
        const auto hadEnded = input.hasEnded;
        asking.output += "Y/n? ";
        input.readInto (line);
        const auto text = line.substr (0, line.find ('\0'));

        if (text.empty() || text == "y" || text == "Y")
            return { asking.output, "yes, 0 lines " };

        if (text == "n" || text == "N")
            return { asking.output, "no, 1 lines Info: Cleaning cancelled by the user." };

        if (hadEnded)
            return { {}, "never" };
    }
}

int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    Input model { { data, data + size } };
    std::istringstream input (model.text);
    auto* const previous = std::cin.rdbuf (input.rdbuf());

    for (int askingsAfterEnd = 0; askingsAfterEnd < 2;)
    {
        askingsAfterEnd += model.hasEnded ? 1 : 0;

        const auto expected = modelsAsking (model);
        const auto actual = ask (size + 2);

        expectEqual ("The prompts", actual.output, expected.output);
        expectEqual ("The answer", actual.end, expected.end);

        if (expected.end == "never")
            break;
    }

    std::cin.rdbuf (previous);
    return 0;
}
