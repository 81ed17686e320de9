#include "FileAccess_linux.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>

static std::string watchedPath;
static std::function<void()> onAccess;
static std::optional<std::vector<std::string>> attempts;

// These stand in for the system's functions in this program. JUCE asks the first whether a file
// exists, and the others to delete a file or an empty folder.

extern "C" int access (const char* path, int mode) noexcept
{
    const auto answer = faccessat (AT_FDCWD, path, mode, 0);

    if (onAccess && path == watchedPath)
        std::exchange (onAccess, nullptr)();

    return answer;
}

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

AfterFileAccess::AfterFileAccess (const juce::File& file, std::function<void()> function)
{
    watchedPath = file.getFullPathName().toStdString();
    onAccess = std::move (function);
}

AfterFileAccess::~AfterFileAccess() { onAccess = nullptr; }

DeletionAttempts::DeletionAttempts() { attempts.emplace(); }
DeletionAttempts::~DeletionAttempts() { attempts.reset(); }

std::vector<std::string> DeletionAttempts::getPaths() const { return *attempts; }
