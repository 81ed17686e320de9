// Holds a file open and shares it with nobody: HoldOpen FILE
// Prints "open" when it does, and lets go when its standard input ends.

#include <windows.h>

#include <cstdio>

int main (int, char* argv[])
{
    const auto file = CreateFileA (argv[1], GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);

    if (file == INVALID_HANDLE_VALUE)
        return 1;

    std::puts ("open");
    std::fflush (stdout);

    while (std::getchar() != EOF)
    {
    }
}
