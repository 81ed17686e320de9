// Runs a program without administrator rights: RunUnelevated PROGRAM [ARGUMENT...]
// Ends with the program's exit code, or with 99 if it could not be started.

#include <windows.h>

#include <cstdio>
#include <string>

// Of a user who is an administrator: the own token, if it is the one without the rights.
static HANDLE getUnelevatedToken()
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

    return elevation.TokenIsElevated ? linked.LinkedToken : token;
}

// Skips this program's own name, which stands in quotes or has no blank.
static std::wstring getCommandLineOfProgram()
{
    const std::wstring own = GetCommandLineW();
    const auto end = own[0] == L'"' ? own.find (L'"', 1) + 1 : own.find (L' ');

    return own.substr (own.find_first_not_of (L' ', end));
}

int main()
{
    auto commandLine = getCommandLineOfProgram();
    STARTUPINFOW startup = {};
    PROCESS_INFORMATION process = {};
    DWORD exitCode = 99;

    startup.cb = sizeof (startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle (STD_INPUT_HANDLE);
    startup.hStdOutput = GetStdHandle (STD_OUTPUT_HANDLE);
    startup.hStdError = GetStdHandle (STD_ERROR_HANDLE);

    if (CreateProcessAsUserW (getUnelevatedToken(),
                              nullptr,
                              commandLine.data(),
                              nullptr,
                              nullptr,
                              TRUE,
                              0,
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
        std::fprintf (stderr, "RunUnelevated: error %lu\n", GetLastError());
    }

    return static_cast<int> (exitCode);
}
