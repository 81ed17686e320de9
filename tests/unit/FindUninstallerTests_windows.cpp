#include "DisposableMachine.h"
#include "FoundUninstaller.h"
#include "OwnRegistry_windows.h"
#include "RecordingLogger.h"
#include "ReplacedImport_windows.h"
#include "SampleKey_windows.h"
#include "SampleRegistry.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <map>

using namespace TessaraWorks;

static const juce::String rootPath (uninstallRoot);
static const std::string root = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
static const std::string openedRoot = "open " + root + " with 20019";

/** Records, while it lives, the program's registry calls in the format of RecordingRegistry, and refuses
    to open a key whose path ends in "Locked".
*/
class RegistryCalls
{
public:
    RegistryCalls() { current = this; }

    JUCE_DECLARE_NON_COPYABLE (RegistryCalls)

    Lines calls;

    /** The paths of the keys that are open, by their numbers. */
    std::map<int, std::string> openKeys;

private:
    static LSTATUS WINAPI open (HKEY hive, const wchar_t* path, DWORD options, REGSAM rights, HKEY* key)
    {
        const auto text = juce::String (path).toStdString();
        current->calls.push_back ("open " + text + " with " + juce::String::toHexString (rights).toStdString());
        EXPECT_EQ (hive, HKEY_LOCAL_MACHINE);
        EXPECT_EQ (options, 0u);

        const auto result = juce::String (path).endsWith ("Locked")
                              ? static_cast<LSTATUS> (ERROR_ACCESS_DENIED)
                              : current->openKey.original (hive, path, options, rights, key);

        if (result == ERROR_SUCCESS)
        {
            current->numbers[*key] = ++current->lastNumber;
            current->openKeys[current->lastNumber] = text;
        }

        return result;
    }

    static LSTATUS WINAPI enumerate (HKEY key,
                                     DWORD index,
                                     wchar_t* name,
                                     DWORD* length,
                                     DWORD* reserved,
                                     wchar_t* kind,
                                     DWORD* kindLength,
                                     FILETIME* lastWrite)
    {
        current->calls.push_back ("enumerate " + toText (key) + " at " + std::to_string (index) + " into "
                                  + std::to_string (*length));
        EXPECT_TRUE (reserved == nullptr && kind == nullptr && kindLength == nullptr && lastWrite == nullptr);
        return current->enumerateKey.original (key, index, name, length, reserved, kind, kindLength, lastWrite);
    }

    static LSTATUS WINAPI query (HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size)
    {
        current->calls.push_back ("query " + toText (key) + " for " + juce::String (name).toStdString() + " into "
                                  + std::to_string (*size));
        EXPECT_EQ (reserved, nullptr);
        EXPECT_NE (type, nullptr);
        return current->queryValue.original (key, name, reserved, type, data, size);
    }

    static LSTATUS WINAPI close (HKEY key)
    {
        current->calls.push_back ("close " + toText (key));
        current->openKeys.erase (current->numbers[key]);
        current->numbers.erase (key);
        return current->closeKey.original (key);
    }

    static std::string toText (HKEY key)
    {
        return key == nullptr ? "no key" : "key " + std::to_string (current->numbers[key]);
    }

    static inline RegistryCalls* current = nullptr;

    std::map<HKEY, int> numbers;
    int lastNumber = 0;

    const ReplacedImport<decltype (open)> openKey { "RegOpenKeyExW", open };
    const ReplacedImport<decltype (enumerate)> enumerateKey { "RegEnumKeyExW", enumerate };
    const ReplacedImport<decltype (query)> queryValue { "RegQueryValueExW", query };
    const ReplacedImport<decltype (close)> closeKey { "RegCloseKey", close };
};

TEST (FindUninstallerInRegistry, OpensEachKeyByItsFullPathAndLeavesOnlyTheMatchingEntryOpen)
{
    SampleRegistry registry;
    registry.add ({ "1", {}, {} });
    registry.add ({ "2", terminated (u"Something else"), terminated (u"C:\\else.exe") });
    registry.add ({ "3", terminated (u"Orvex Studio"), terminated (u"C:\\studio.exe") });
    registry.add ({ "4", terminated (u"Orvex Studio"), terminated (u"C:\\behind.exe") });

    RegistryCalls registryCalls;
    EXPECT_EQ (findCommand ("Orvex Studio"), "C:\\studio.exe");

    EXPECT_EQ (registryCalls.calls,
               (Lines { openedRoot,
                        "enumerate key 1 at 0 into 4096",
                        "open " + root + "\\1 with 20019",
                        "query key 2 for DisplayName into 2048",
                        "close key 2",
                        "enumerate key 1 at 1 into 4096",
                        "open " + root + "\\2 with 20019",
                        "query key 3 for DisplayName into 2048",
                        "close key 3",
                        "enumerate key 1 at 2 into 4096",
                        "open " + root + "\\3 with 20019",
                        "query key 4 for DisplayName into 2048",
                        "query key 4 for UninstallString into 2048",
                        "close key 1" }));
    EXPECT_EQ (registryCalls.openKeys, (std::map<int, std::string> { { 4, root + "\\3" } }));
}

TEST (FindUninstallerInRegistry, ClosesEveryKeyWhenAnEntryCannotBeOpened)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "1 Locked", terminated (u"Orvex Studio"), terminated (u"C:\\locked.exe") });
    registry.add ({ "2", terminated (u"Orvex Studio"), terminated (u"C:\\behind.exe") });

    RegistryCalls registryCalls;
    EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt);

    EXPECT_EQ (registryCalls.calls,
               (Lines { openedRoot,
                        "enumerate key 1 at 0 into 4096",
                        "open " + root + "\\1 Locked with 20019",
                        "close no key",
                        "close key 1" }));
    EXPECT_EQ (logger.lines, Lines { "Critical: Failed to open the Windows registry subkey: " + root + "\\1 Locked" });
}

TEST (FindUninstallerInRegistry, LogsAMissingRootKey)
{
    RecordingLogger logger;
    const OwnRegistry emptyRegistry;

    EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt);
    EXPECT_EQ (logger.lines, Lines { "Critical: Failed to open the Windows registry key: " + root });
}

TEST (FindUninstallerInRegistry, MatchesAnEmptyFragmentWithTheFirstReadableNameEvenIfEmpty)
{
    RecordingLogger logger;
    SampleRegistry registry;
    registry.add ({ "Sample 1", {}, terminated (u"nameless") });
    registry.add ({ "Sample 2", terminated (u""), terminated (u"empty") });
    registry.add ({ "Sample 3", terminated (u"Orvex Studio"), terminated (u"studio") });

    EXPECT_EQ (findCommand (""), "empty");
    EXPECT_EQ (logger.lines, Lines {});
}

TEST (FindUninstallerInRegistry, ReadsAValueOfAnyTypeAsAString)
{
    const OwnRegistry registry;

    const SampleKey number (registry.machine, rootPath + "\\Sample 1");
    number.set (L"DisplayName", REG_DWORD, Bytes ("\x10\x25\x11\x25", 4));
    number.set (L"UninstallString", REG_DWORD, Bytes ("C\0:\0", 4));

    const SampleKey list (registry.machine, rootPath + "\\Sample 2");
    list.set (L"DisplayName", REG_MULTI_SZ, terminated (u"Alpha sample") + terminated (u"Beta sample") + Bytes (2, 0));
    list.set (L"UninstallString", REG_EXPAND_SZ, terminated (u"%TEMP%\\uninstall.exe"));

    const SampleKey binary (registry.machine, rootPath + "\\Sample 3");
    binary.set (L"DisplayName", REG_BINARY, terminated (u"Gamma sample"));
    binary.set (L"UninstallString", REG_NONE, terminated (u"\"C:\\3.exe\""));

    EXPECT_EQ (findCommand (juce::CharPointer_UTF8 ("\u2510\u2511")), "C:");
    EXPECT_EQ (findCommand ("Alpha sample"), "%TEMP%\\uninstall.exe");
    EXPECT_EQ (findCommand ("Beta sample"), std::nullopt);
    EXPECT_EQ (findCommand ("Gamma sample"), "C:\\3.exe");
}

// Only the machine's own registry has a view for 32-bit programs.
using FindUninstallerOnThisMachine = DisposableMachine;

TEST_F (FindUninstallerOnThisMachine, DoesNotSeeTheEntriesOf32BitPrograms)
{
    const SampleKey key (HKEY_LOCAL_MACHINE, rootPath + "\\Sample of 32 bits", KEY_WOW64_32KEY);
    key.set (L"DisplayName", REG_SZ, terminated (u"Orvex Studio"));

    HKEY sameInOtherView = nullptr;
    ASSERT_EQ (RegOpenKeyExW (HKEY_LOCAL_MACHINE,
                              (rootPath + "\\Sample of 32 bits").toWideCharPointer(),
                              0,
                              KEY_READ | KEY_WOW64_64KEY,
                              &sameInOtherView),
               ERROR_FILE_NOT_FOUND)
        << "this system has no separate view for 32-bit programs";

    EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt);
}

TEST (FindUninstallerInRegistry, DoesNotSeeTheEntriesOfOneUser)
{
    const OwnRegistry registry;
    const SampleKey emptyRoot (registry.machine, rootPath);
    const SampleKey key (registry.user, rootPath + "\\Sample of a user");
    key.set (L"DisplayName", REG_SZ, terminated (u"Orvex Studio"));

    EXPECT_EQ (findCommand ("Orvex Studio"), std::nullopt);
}
