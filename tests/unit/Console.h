#pragma once

#include <juce_core/juce_core.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>

/** Replaces the console while it lives: std::cout and std::cerr write into it, and std::cin
    reads the given input, line by line.
*/
class Console
{
public:
    explicit Console (std::string input = {})
        : in (std::move (input), onRead)
        , out (onFlush)
    {
        std::cin.clear();
    }

    ~Console()
    {
        std::cin.rdbuf (oldIn);
        std::cin.clear();
        std::cin.tie (oldTie);
        std::cout.rdbuf (oldOut);
        std::cerr.rdbuf (oldErr);
    }

    JUCE_DECLARE_NON_COPYABLE (Console)

    /** Returns the output of std::cout so far. */
    std::string output() const { return out.str(); }

    /** Returns the part of it that the user sees: all up to the last flush. */
    std::string visibleOutput() const { return output().substr (0, out.visibleLength); }

    /** Returns the output of std::cerr so far. */
    std::string errors() const { return err.str(); }

    /** Called, if set, before each line is read. */
    std::function<void()> onRead;

    /** Called, if set, after each flush of std::cout. */
    std::function<void()> onFlush;

private:
    struct Keyboard : std::streambuf
    {
        Keyboard (std::string linesToType, const std::function<void()>& functionToCall)
            : lines (std::move (linesToType))
            , onRead (functionToCall)
        {
        }

        int underflow() override
        {
            if (onRead)
                onRead();

            auto* const line = egptr() == nullptr ? lines.data() : egptr();
            const auto start = static_cast<size_t> (line - lines.data());

            if (start == lines.size())
                return traits_type::eof();

            setg (line, line, lines.data() + std::min (lines.find ('\n', start), lines.size() - 1) + 1);
            return traits_type::to_int_type (*line);
        }

        std::string lines;
        const std::function<void()>& onRead;
    };

    struct Screen : std::stringbuf
    {
        explicit Screen (const std::function<void()>& functionToCall)
            : onFlush (functionToCall)
        {
        }

        int sync() override
        {
            visibleLength = static_cast<size_t> (pptr() - pbase());

            if (onFlush)
                onFlush();

            return 0;
        }

        size_t visibleLength = 0;
        const std::function<void()>& onFlush;
    };

    Keyboard in;
    Screen out;
    std::ostringstream err;
    std::streambuf* const oldIn = std::cin.rdbuf (&in);
    std::ostream* const oldTie = std::cin.tie (nullptr); // otherwise each read would flush std::cout
    std::streambuf* const oldOut = std::cout.rdbuf (&out);
    std::streambuf* const oldErr = std::cerr.rdbuf (err.rdbuf());
};
