#include "StubUninstaller.h"

#include <sys/auxv.h>

#include <csignal>

// Without /proc, which a test's machine may lack.
std::filesystem::path getOwnPath()
{
    return std::filesystem::absolute (reinterpret_cast<const char*> (getauxval (AT_EXECFN)));
}

void removeRegistryKey (const std::string&) {}

int main (int argc, char* argv[])
{
    std::string commandLine;

    for (int i = 0; i < argc; ++i)
        commandLine += (i == 0 ? "" : " ") + std::string (argv[i]);

    // Nobody reads the output after the program that started this one has given up waiting.
    std::signal (SIGPIPE, SIG_IGN);

    return runStub (commandLine);
}
