// Runs a program with its standard input closed: RunWithoutInput PROGRAM [ARGUMENT...]
// Ends with the program's exit code.

#include <io.h>
#include <process.h>

int main (int, char* argv[])
{
    _close (0);
    return static_cast<int> (_spawnv (_P_WAIT, argv[1], argv + 1));
}
