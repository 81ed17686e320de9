// Runs a program as a service does, with neither a console nor an input or output of any kind:
// RunWithoutConsole PROGRAM [ARGUMENT]. Ends with the program's exit code.

#include <windows.h>

#include <string>

int main (int argc, char* argv[])
{
    auto commandLine = std::string ("\"") + argv[1] + "\"" + (argc > 2 ? std::string (" ") + argv[2] : "");

    STARTUPINFOA startup = {};
    startup.cb = sizeof (startup);
    PROCESS_INFORMATION process = {};

    if (! CreateProcessA (nullptr,
                          commandLine.data(),
                          nullptr,
                          nullptr,
                          FALSE,
                          DETACHED_PROCESS,
                          nullptr,
                          nullptr,
                          &startup,
                          &process))
        return 2;

    WaitForSingleObject (process.hProcess, INFINITE);

    DWORD exitCode = 2;
    GetExitCodeProcess (process.hProcess, &exitCode);
    return static_cast<int> (exitCode);
}
