#include "StubUninstaller.h"

#include <windows.h>

std::filesystem::path getOwnPath()
{
    std::wstring path (32768, 0);
    path.resize (GetModuleFileNameW (nullptr, path.data(), static_cast<DWORD> (path.size())));
    return path;
}

void removeRegistryKey (const std::string& path)
{
    RegDeleteKeyW (HKEY_LOCAL_MACHINE, std::filesystem::u8path (path).c_str());
}

int main() { return runStub (std::filesystem::path (GetCommandLineW()).u8string()); }
