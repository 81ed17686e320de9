#include "FileAccess_linux.h"

#include <fcntl.h>
#include <unistd.h>

#include <string>

static std::string watchedPath;
static std::function<void()> onAccess;

// Replaces the system's function in this program. JUCE calls it to check whether a file exists.
extern "C" int access (const char* path, int mode) noexcept
{
    const auto answer = faccessat (AT_FDCWD, path, mode, 0);

    if (onAccess && path == watchedPath)
        std::exchange (onAccess, nullptr)();

    return answer;
}

AfterFileAccess::AfterFileAccess (const juce::File& file, std::function<void()> function)
{
    watchedPath = file.getFullPathName().toStdString();
    onAccess = std::move (function);
}

AfterFileAccess::~AfterFileAccess() { onAccess = nullptr; }
