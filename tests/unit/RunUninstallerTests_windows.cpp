#include "uninstall/RunUninstaller.h"

#include "FastClock_windows.h"
#include "RecordingLogger.h"
#include "ReplacedImport_windows.h"
#include "StubUninstaller.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (RunUninstaller, PassesOnExitCodesOf32BitsEvenThatOfARunningProgram)
{
    for (const juce::uint32 code : { 259u, 4294967295u })
    {
        RecordingLogger logger;
        TemporaryFolder folder;
        StubUninstaller stub (folder, "uninstall", { "exit " + juce::String (code) });

        juce::uint32 exitCode = 99;

        EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
        EXPECT_EQ (exitCode, code);
        EXPECT_EQ (logger.lines, Lines {});
    }
}

TEST (RunUninstaller, WarnsWhenThereIsNoProgramToStart)
{
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall");

    const juce::String paths[] = { "",
                                   folder.getChildFile ("missing.exe").getFullPathName(),
                                   stub.getPath() + " /ask",
                                   folder.getFullPathName(),
                                   folder.makeFile ("text.txt").getFullPathName(),
                                   folder.makeFile ("text.exe").getFullPathName() };

    for (const auto& path : paths)
        for (const auto* arguments : { "", "/SILENT" })
        {
            RecordingLogger logger;
            juce::uint32 exitCode = 99;

            EXPECT_FALSE (runUninstaller (path, exitCode, arguments)) << path;
            EXPECT_EQ (exitCode, 0u) << path;
            EXPECT_EQ (logger.lines, Lines { "Warning: Cleaner failed to launch the uninstaller." }) << path;
        }

    EXPECT_EQ (stub.getNotes(), Lines {});
}

TEST (RunUninstaller, StartsAProgramInAFolderOfLettersBeyondLatin)
{
    TemporaryFolder folder;
    StubUninstaller stub (folder.getChildFile (juce::CharPointer_UTF8 ("\u97f3\u697d")), "uninstall");

    juce::uint32 exitCode = 99;

    EXPECT_TRUE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
    EXPECT_EQ (stub.getNotes(), Lines { ("\"" + stub.getPath() + "\" /SILENT").toStdString() });
}

TEST (RunUninstaller, QuotesThePathAsItIsAndGivesTheProgramAPipeAndNoConsole)
{
    static Lines calls;
    calls.clear();

    const ReplacedImport<decltype (CreateProcessW)> start (
        "CreateProcessW",
        [] (const wchar_t* program,
            wchar_t* commandLine,
            SECURITY_ATTRIBUTES*,
            SECURITY_ATTRIBUTES*,
            BOOL inheritsHandles,
            DWORD flags,
            void* environment,
            const wchar_t* folder,
            STARTUPINFOW* startup,
            PROCESS_INFORMATION*) -> BOOL
        {
            calls.push_back (juce::String (commandLine).toStdString());
            EXPECT_TRUE (program == nullptr && environment == nullptr && folder == nullptr);
            EXPECT_TRUE (inheritsHandles);
            EXPECT_NE (flags & CREATE_NO_WINDOW, 0u);
            EXPECT_NE (startup->dwFlags & STARTF_USESTDHANDLES, 0u);
            EXPECT_EQ (GetFileType (startup->hStdOutput), static_cast<DWORD> (FILE_TYPE_PIPE));
            EXPECT_EQ (GetFileType (startup->hStdError), static_cast<DWORD> (FILE_TYPE_PIPE));
            return FALSE;
        });

    RecordingLogger logger;
    juce::uint32 exitCode = 99;

    EXPECT_FALSE (runUninstaller ("C:\\a \"b\" %TEMP% & ^'\\\\un.exe\\", exitCode, "/SILENT"));
    EXPECT_EQ (exitCode, 0u);
    EXPECT_EQ (calls, Lines { "\"C:\\a \"b\" %TEMP% & ^'\\\\un.exe\\\" /SILENT" });
}

TEST (RunUninstaller, PassesOnTheExitCodeOfAProgramThatEndsRightAfterTheLimit)
{
    static BOOL (*getExitCode) (HANDLE, DWORD*) = nullptr;

    const FastClock clock;
    const ReplacedImport<decltype (GetExitCodeProcess)> askLater ("GetExitCodeProcess",
                                                                  [] (HANDLE process, DWORD* exitCode) -> BOOL
                                                                  {
                                                                      WaitForSingleObject (process, INFINITE);
                                                                      return getExitCode (process, exitCode);
                                                                  });
    getExitCode = askLater.original;

    RecordingLogger logger;
    TemporaryFolder folder;
    StubUninstaller stub (folder, "uninstall", { "sleep 1000", "exit 3" });

    juce::uint32 exitCode = 99;

    EXPECT_FALSE (runUninstaller (stub.getPath(), exitCode, "/SILENT"));
    EXPECT_EQ (exitCode, 3u);
    EXPECT_EQ (logger.lines, Lines { "Warning: Cleaner failed to launch the uninstaller." });
}
