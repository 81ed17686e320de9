#include "DisposableMachine.h"
#include "FoundUninstaller.h"
#include "OwnRegistry_windows.h"
#include "RecordingLogger.h"
#include "SampleKey_windows.h"
#include "SampleRegistry.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace TessaraWorks;

static const juce::String rootPath (uninstallRoot);

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
