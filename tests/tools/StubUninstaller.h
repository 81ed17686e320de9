#pragma once

/*  Stands in for the uninstaller of a product, wherever a test needs a real program.

    It appends its full command line to a file beside itself with its own name and the extension
    .calls, then carries out the orders in the file with the extension .orders, one on each line:

        sleep MILLISECONDS      does nothing for this time
        print BYTES             writes this number of bytes to standard output; goes on if nobody reads
        print-error BYTES       the same to standard error
        remove PATH             deletes a file, or a folder with its contents, as far as it can
        remove-key PATH         deletes a registry key below HKEY_LOCAL_MACHINE that has no subkeys;
                                does nothing on a system without a registry
        note-variable NAME      appends NAME=VALUE, with an environment variable, to the calls
        exit CODE               sets the exit code, up to 4294967295; it is 0 without this order

    After the last order it appends the line "done" to the calls. Without a file of orders, it only
    notes the call and exits with 0. The files are in UTF-8, and the orders may have the line ends of
    either system.
*/

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

// The parts that depend on the system.

std::filesystem::path getOwnPath();
void removeRegistryKey (const std::string& path);

/** Deletes as much as possible. On Windows, the file of a running program cannot be deleted. */
inline void removeAll (const std::filesystem::path& path)
{
    std::error_code ignored;

    if (std::filesystem::is_directory (std::filesystem::symlink_status (path, ignored)))
    {
        std::vector<std::filesystem::path> children;

        for (const auto& child : std::filesystem::directory_iterator (path, ignored))
            children.push_back (child.path());

        for (const auto& child : children)
            removeAll (child);
    }

    std::filesystem::remove (path, ignored);
}

inline int runStub (const std::string& commandLine)
{
    const auto beside = [] (const char* ending) { return getOwnPath().replace_extension (ending); };

    const auto note = [&] (const std::string& line)
    { std::ofstream (beside (".calls"), std::ios::app | std::ios::binary) << line << '\n'; };

    note (commandLine);

    std::ifstream file (beside (".orders"));

    if (! file)
        return 0;

    std::vector<std::string> orders;

    for (std::string line; std::getline (file, line);)
        orders.push_back (line.substr (0, line.find ('\r')));

    // One of the orders may delete this file.
    file.close();

    unsigned long exitCode = 0;

    for (const auto& order : orders)
    {
        const auto blank = order.find (' ');
        const auto verb = order.substr (0, blank);
        const auto operand = blank == std::string::npos ? std::string() : order.substr (blank + 1);

        if (verb == "sleep")
            std::this_thread::sleep_for (std::chrono::milliseconds (std::stoul (operand)));
        else if (verb == "print")
            std::cout << std::string (std::stoul (operand), 'x') << std::flush;
        else if (verb == "print-error")
            std::cerr << std::string (std::stoul (operand), 'x') << std::flush;
        else if (verb == "remove")
            removeAll (std::filesystem::u8path (operand));
        else if (verb == "remove-key")
            removeRegistryKey (operand);
        else if (verb == "note-variable")
            note (operand + "=" + std::getenv (operand.c_str()));
        else if (verb == "exit")
            exitCode = std::stoul (operand);
        else
            note ("unknown order: " + order);
    }

    note ("done");
    return static_cast<int> (exitCode);
}
