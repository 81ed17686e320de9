#include "DeletionAttempts_linux.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>

static std::optional<std::vector<std::string>> attempts;

// These replace the system's functions in this program.

extern "C" int rmdir (const char* path) noexcept
{
    if (attempts)
        attempts->push_back (path);

    return unlinkat (AT_FDCWD, path, AT_REMOVEDIR);
}

extern "C" int remove (const char* path) noexcept
{
    if (attempts)
        attempts->push_back (path);

    const auto answer = unlinkat (AT_FDCWD, path, 0);
    return answer != 0 && errno == EISDIR ? unlinkat (AT_FDCWD, path, AT_REMOVEDIR) : answer;
}

DeletionAttempts::DeletionAttempts() { attempts.emplace(); }
DeletionAttempts::~DeletionAttempts() { attempts.reset(); }

std::vector<std::string> DeletionAttempts::getPaths() const { return *attempts; }
