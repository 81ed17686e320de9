#include "DeletionAttempts.h"

#include "ReplacedImport_windows.h"

#include <juce_core/juce_core.h>

#include <optional>

static BOOL WINAPI deleteFile (const wchar_t* path);
static BOOL WINAPI removeFolder (const wchar_t* path);

struct Replacements
{
    const ReplacedImport<decltype (deleteFile)> forFiles { "DeleteFileW", deleteFile };
    const ReplacedImport<decltype (removeFolder)> forFolders { "RemoveDirectoryW", removeFolder };
    std::vector<std::string> attempts;
};

static std::optional<Replacements> replacements;

static BOOL WINAPI deleteFile (const wchar_t* path)
{
    replacements->attempts.push_back (juce::String (path).toStdString());
    return replacements->forFiles.original (path);
}

static BOOL WINAPI removeFolder (const wchar_t* path)
{
    replacements->attempts.push_back (juce::String (path).toStdString());
    return replacements->forFolders.original (path);
}

DeletionAttempts::DeletionAttempts() { replacements.emplace(); }
DeletionAttempts::~DeletionAttempts() { replacements.reset(); }

std::vector<std::string> DeletionAttempts::getPaths() const { return replacements->attempts; }
