#include "SampleRegistry.h"

#include "OwnRegistry_windows.h"
#include "SampleKey_windows.h"

#include <list>

struct SampleRegistry::Implementation
{
    const OwnRegistry registry;
    const SampleKey root { registry.machine, uninstallRoot };
    std::list<SampleKey> keys;
};

// A string without a terminator is stored as REG_BINARY: the system may add a terminator to a REG_SZ.
static DWORD typeOf (const Bytes& value)
{
    const auto size = value.size();
    const auto isTerminated = size >= 2 && size % 2 == 0 && value.substr (size - 2) == Bytes (2, '\0');
    return isTerminated ? REG_SZ : REG_BINARY;
}

SampleRegistry::SampleRegistry()
    : implementation (std::make_unique<Implementation>())
{
}

SampleRegistry::~SampleRegistry() = default;

void SampleRegistry::add (const UninstallEntry& entry)
{
    const auto& key = implementation->keys.emplace_back (implementation->registry.machine,
                                                         uninstallRoot + ("\\" + entry.keyName));

    if (entry.displayName)
        key.set (L"DisplayName", typeOf (*entry.displayName), *entry.displayName);

    if (entry.uninstallString)
        key.set (L"UninstallString", typeOf (*entry.uninstallString), *entry.uninstallString);
}
