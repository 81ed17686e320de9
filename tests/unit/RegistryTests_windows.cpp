#include "RecordingLogger.h"
#include "ReplacedImport_windows.h"
#include "uninstall/Registry.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

static Lines calls;
static int somethingOpen;
static HKEY const handle = reinterpret_cast<HKEY> (&somethingOpen);

static std::string text (const wchar_t* wide) { return juce::String (wide).toStdString(); }

static LSTATUS WINAPI openKey (HKEY hive, const wchar_t* path, DWORD options, REGSAM rights, HKEY* key)
{
    EXPECT_EQ (hive, HKEY_LOCAL_MACHINE);
    calls.push_back ("open " + text (path) + ", " + std::to_string (options) + ", " + std::to_string (rights));
    *key = handle;
    return ERROR_ACCESS_DENIED;
}

static LSTATUS WINAPI
enumerateKey (HKEY key, DWORD index, wchar_t* name, DWORD* length, DWORD* r, wchar_t* kind, DWORD* k, FILETIME* time)
{
    EXPECT_TRUE (key == handle && r == nullptr && kind == nullptr && k == nullptr && time == nullptr);
    calls.push_back ("enumerate " + text (name) + ", " + std::to_string (index) + ", " + std::to_string (*length));
    return ERROR_MORE_DATA;
}

static LSTATUS WINAPI queryValue (HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size)
{
    EXPECT_TRUE (key == handle && reserved == nullptr && type != nullptr);
    calls.push_back ("query " + text (name) + ", " + reinterpret_cast<char*> (data) + ", " + std::to_string (*size));
    return ERROR_NOT_SUPPORTED;
}

static LSTATUS WINAPI closeKey (HKEY key)
{
    calls.push_back (key == handle ? "close" : key == nullptr ? "close no key" : "close something else");
    return ERROR_SUCCESS;
}

TEST (Registry, PassesEachCallOnToWindowsAndReturnsItsAnswer)
{
    const ReplacedImport opening ("RegOpenKeyExW", openKey);
    const ReplacedImport enumerating ("RegEnumKeyExW", enumerateKey);
    const ReplacedImport querying ("RegQueryValueExW", queryValue);
    const ReplacedImport closing ("RegCloseKey", closeKey);
    Registry::Key key = nullptr;
    wchar_t name[] = L"the name";
    char data[] = "the data";
    calls.clear();

    EXPECT_EQ (Registry::openKey (L"the path", 0x20019, key), ERROR_ACCESS_DENIED);
    EXPECT_EQ (key, nullptr);
    EXPECT_EQ (Registry::enumerateKey (handle, 7, name, 4096), ERROR_MORE_DATA);
    EXPECT_EQ (Registry::queryValue (handle, L"the value", data, 2048), ERROR_NOT_SUPPORTED);
    Registry::closeKey (handle);
    Registry::closeKey (key);

    EXPECT_EQ (calls,
               (Lines { "open the path, 0, 131097",
                        "enumerate the name, 7, 4096",
                        "query the value, the data, 2048",
                        "close",
                        "close no key" }));
}
