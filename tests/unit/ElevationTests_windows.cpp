#include "app/Elevation.h"

#include "RecordingLogger.h"
#include "ReplacedImport_windows.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

/** A process token, with the system's answers about it. */
struct Token
{
    bool opens = true;
    bool isReadable = true;
    DWORD isElevated = 1;
};

static Token token;
static Lines calls;

static BOOL WINAPI openToken (HANDLE process, DWORD rights, HANDLE* opened)
{
    calls.push_back ("open with " + std::to_string (rights));
    EXPECT_EQ (process, GetCurrentProcess());

    if (token.opens)
        *opened = &token;

    return token.opens ? TRUE : FALSE;
}

// Fills the data even if it fails: the program must ignore it then.
static BOOL WINAPI readToken (HANDLE opened, TOKEN_INFORMATION_CLASS kind, void* data, DWORD size, DWORD* length)
{
    calls.push_back ("read " + std::to_string (kind) + " into " + std::to_string (size));
    EXPECT_EQ (opened, &token);
    *static_cast<DWORD*> (data) = token.isElevated;
    *length = sizeof (token.isElevated);
    return token.isReadable ? TRUE : FALSE;
}

static BOOL WINAPI closeToken (HANDLE opened)
{
    calls.push_back (opened == &token ? "close" : "close something else");
    return FALSE;
}

TEST (Elevation, IsReadFromTheTokenAndAbsentIfThatFails)
{
    struct Row
    {
        Token token;
        bool isElevated;
        Lines calls;
    };

    const Row rows[] = {
        { { true, true, 1 }, true, { "open with 8", "read 20 into 4", "close" } },
        { { true, true, 0 }, false, { "open with 8", "read 20 into 4", "close" } },
        { { true, false, 1 }, false, { "open with 8", "read 20 into 4", "close" } },
        { { false, true, 1 }, false, { "open with 8" } },
    };

    for (const auto& row : rows)
    {
        const ReplacedImport opening ("OpenProcessToken", openToken);
        const ReplacedImport reading ("GetTokenInformation", readToken);
        const ReplacedImport closing ("CloseHandle", closeToken);
        token = row.token;
        calls.clear();

        EXPECT_EQ (isProcessElevated(), row.isElevated);
        EXPECT_EQ (calls, row.calls);
    }
}
