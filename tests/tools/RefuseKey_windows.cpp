// Makes a registry key below HKEY_LOCAL_MACHINE that nobody may open: RefuseKey PATH
// Prints "refused" when it is there, and removes it when its standard input ends.

#include <windows.h>

#include <cstdio>

int main (int, char* argv[])
{
    HKEY key = nullptr;
    ACL nobody = {};
    SECURITY_DESCRIPTOR security = {};

    InitializeAcl (&nobody, sizeof (nobody), ACL_REVISION);
    InitializeSecurityDescriptor (&security, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl (&security, TRUE, &nobody, FALSE);

    if (RegCreateKeyExA (
            HKEY_LOCAL_MACHINE, argv[1], 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &key, nullptr)
            != ERROR_SUCCESS
        || RegSetKeySecurity (key, DACL_SECURITY_INFORMATION, &security) != ERROR_SUCCESS)
        return 1;

    std::puts ("refused");
    std::fflush (stdout);

    while (std::getchar() != EOF)
    {
    }

    // Everybody may open it again, and so delete it.
    SetSecurityDescriptorDacl (&security, TRUE, nullptr, FALSE);
    RegSetKeySecurity (key, DACL_SECURITY_INFORMATION, &security);
    RegDeleteKeyA (HKEY_LOCAL_MACHINE, argv[1]);
}
