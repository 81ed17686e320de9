#pragma once

#include <iostream>
#include <sstream>
#include <string>

/** Stands in for the console while it lives: std::cout and std::cerr write into it, and std::cin
    reads the given input.
*/
class Console
{
public:
    explicit Console (const std::string& input = {})
        : in (input)
    {
        std::cin.clear();
    }

    ~Console()
    {
        std::cin.rdbuf (oldIn);
        std::cin.clear();
        std::cout.rdbuf (oldOut);
        std::cerr.rdbuf (oldErr);
    }

    Console (const Console&) = delete;
    Console& operator= (const Console&) = delete;

    /** What std::cout was given so far. */
    std::string output() const { return out.str(); }

    /** What std::cerr was given so far. */
    std::string errors() const { return err.str(); }

private:
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    std::streambuf* const oldIn = std::cin.rdbuf (in.rdbuf());
    std::streambuf* const oldOut = std::cout.rdbuf (out.rdbuf());
    std::streambuf* const oldErr = std::cerr.rdbuf (err.rdbuf());
};
