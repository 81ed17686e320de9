#include "Elevation.h"

#include <windows.h>

namespace TessaraWorks
{

bool isProcessElevated()
{
    HANDLE token = nullptr;

    if (! OpenProcessToken (GetCurrentProcess(), TOKEN_QUERY, &token))
        return false;

    TOKEN_ELEVATION elevation = {};
    DWORD size = 0;
    const auto known = GetTokenInformation (token, TokenElevation, &elevation, sizeof (elevation), &size) != FALSE;
    CloseHandle (token);

    return known && elevation.TokenIsElevated != 0;
}

} // namespace TessaraWorks
