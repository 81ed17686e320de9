#include "ReadAnswer.h"

#include <windows.h>

#include <iostream>

namespace TessaraWorks
{

constexpr DWORD ctrlCTakesAtMostMilliseconds = 3000;

// A pipe, a file and NUL are no console.
static bool inputIsConsole()
{
    DWORD mode = {};
    return GetConsoleMode (GetStdHandle (STD_INPUT_HANDLE), &mode) != FALSE;
}

void readAnswer (std::string& line)
{
    const auto wasConsole = inputIsConsole();

    std::getline (std::cin, line);

    if (wasConsole && ! std::cin.good())
    {
        Sleep (ctrlCTakesAtMostMilliseconds);

        if (! inputIsConsole())
            std::cin.setstate (std::ios::badbit); // lasts, and the end of the input does not set it
    }

    if (std::cin.bad())
        line = "n";
}

} // namespace TessaraWorks
