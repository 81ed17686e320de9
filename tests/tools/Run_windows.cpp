// Runs a program in an unusual way: Run WAY PROGRAM [ARGUMENT...]
//
//     unelevated         without administrator rights
//     without-input      with its standard input closed
//     without-console    as a service does, with no console, no input and no output
//
// Ends with the program's exit code, or with 99 if it could not be started.

#include <windows.h>

#include <cstdio>
#include <string>

// The process's own token, or the token without the rights that belongs to it.
static HANDLE getToken (bool isElevated)
{
    HANDLE token = nullptr;
    TOKEN_ELEVATION elevation = {};
    TOKEN_LINKED_TOKEN linked = {};
    DWORD size = 0;

    if (OpenProcessToken (GetCurrentProcess(), TOKEN_QUERY | TOKEN_DUPLICATE | TOKEN_ASSIGN_PRIMARY, &token))
    {
        GetTokenInformation (token, TokenElevation, &elevation, sizeof (elevation), &size);
        GetTokenInformation (token, TokenLinkedToken, &linked, sizeof (linked), &size);
    }

    return elevation.TokenIsElevated && ! isElevated ? linked.LinkedToken : token;
}

int main (int, char* argv[])
{
    const std::string way = argv[1];
    const auto hasConsole = way != "without-console";
    std::wstring commandLine = GetCommandLineW();
    commandLine.erase (0, commandLine.find (std::wstring (way.begin(), way.end())) + way.size() + 1);

    STARTUPINFOW startup = {};
    startup.cb = sizeof (startup);
    startup.dwFlags = STARTF_USESTDHANDLES;

    if (way == "unelevated")
        startup.hStdInput = GetStdHandle (STD_INPUT_HANDLE);

    if (hasConsole)
    {
        startup.hStdOutput = GetStdHandle (STD_OUTPUT_HANDLE);
        startup.hStdError = GetStdHandle (STD_ERROR_HANDLE);
    }

    PROCESS_INFORMATION process = {};
    DWORD exitCode = 99;

    if (CreateProcessAsUserW (getToken (way != "unelevated"),
                              nullptr,
                              commandLine.data(),
                              nullptr,
                              nullptr,
                              hasConsole,
                              hasConsole ? 0 : DETACHED_PROCESS,
                              nullptr,
                              nullptr,
                              &startup,
                              &process))
    {
        WaitForSingleObject (process.hProcess, INFINITE);
        GetExitCodeProcess (process.hProcess, &exitCode);
    }
    else
    {
        std::fprintf (stderr, "Run: error %lu\n", GetLastError());
    }

    return static_cast<int> (exitCode);
}
