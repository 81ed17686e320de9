// Owns a mutex, by which an application lets its uninstaller know that it is running: HoldMutex NAME
// Prints "running" when it does, and ends with its standard input.

#include <windows.h>

#include <cstdio>

int main (int, char* argv[])
{
    if (CreateMutexA (nullptr, FALSE, argv[1]) == nullptr)
        return 1;

    std::puts ("running");
    std::fflush (stdout);

    while (std::getchar() != EOF)
    {
    }
}
