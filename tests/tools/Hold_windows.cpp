// Keeps something from other programs: Hold KIND NAME
//
//     file     opens a file and shares it with nobody
//     mutex    owns a mutex, by which an application tells its uninstaller that it is running
//     key      makes a registry key below HKEY_LOCAL_MACHINE that nobody may open
//
// Prints "held" when it holds it, and lets go at the end of its standard input.

#include <windows.h>

#include <cstdio>
#include <string>

static bool allow (HKEY key, ACL* users)
{
    SECURITY_DESCRIPTOR security = {};
    InitializeSecurityDescriptor (&security, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl (&security, TRUE, users, FALSE);

    return RegSetKeySecurity (key, DACL_SECURITY_INFORMATION, &security) == ERROR_SUCCESS;
}

static HKEY createRefusedKey (const char* path)
{
    HKEY key = nullptr;
    ACL nobody = {};
    InitializeAcl (&nobody, sizeof (nobody), ACL_REVISION);
    RegCreateKeyExA (HKEY_LOCAL_MACHINE, path, 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, nullptr);

    return allow (key, &nobody) ? key : nullptr;
}

static HANDLE openAlone (const char* file)
{
    const auto handle = CreateFileA (file, GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);

    return handle == INVALID_HANDLE_VALUE ? nullptr : handle;
}

int main (int, char* argv[])
{
    const std::string kind = argv[1];
    const auto* name = argv[2];
    const auto key = kind == "key" ? createRefusedKey (name) : nullptr;

    if (! (key || (kind == "file" && openAlone (name)) || (kind == "mutex" && CreateMutexA (nullptr, FALSE, name))))
        return 1;

    std::puts ("held");
    std::fflush (stdout);

    while (std::getchar() != EOF)
    {
    }

    if (key)
    {
        allow (key, nullptr); // everybody, and so to delete it
        RegDeleteKeyA (HKEY_LOCAL_MACHINE, name);
    }
}
