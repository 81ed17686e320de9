#include "FastClock_windows.h"
#include "ReplacedImport_windows.h"
#include "RunUninstallerFixture.h"

using namespace TessaraWorks;

TEST_F (RunUninstaller, ReturnsExitCodesOf32BitsEvenThatOfARunningProgram)
{
    for (const juce::uint32 code : { 259u, 4294967295u })
    {
        StubUninstaller stub (folder, "uninstall", { "exit " + juce::String (code) });

        EXPECT_EQ (run (stub.getPath()), End (true, code));
    }

    EXPECT_EQ (logger.lines, Lines {});
}

TEST_F (RunUninstaller, WarnsWhenThereIsNoProgramToStart)
{
    StubUninstaller stub (folder, "uninstall");

    for (const auto& path : { juce::String(),
                              folder.getChildFile ("missing.exe").getFullPathName(),
                              stub.getPath() + " /ask",
                              folder.getFullPathName(),
                              folder.makeFile ("text.txt").getFullPathName(),
                              folder.makeFile ("text.exe").getFullPathName() })
        for (const auto* arguments : { "", "/SILENT" })
        {
            logger.lines.clear();

            EXPECT_EQ (run (path, arguments), End (false, 0)) << path;
            EXPECT_EQ (logger.lines, Lines { "Warning: Cleaner failed to launch the uninstaller." }) << path;
        }

    EXPECT_EQ (stub.getNotes(), Lines {});
}

TEST_F (RunUninstaller, StartsAProgramInAFolderWithANonLatinName)
{
    StubUninstaller stub (folder.getChildFile (juce::CharPointer_UTF8 ("\u97f3\u697d")), "uninstall");

    EXPECT_EQ (run (stub.getPath()), End (true, 0));
    EXPECT_EQ (stub.getNotes(), Lines { stub.calledWith ("/SILENT") });
}

TEST_F (RunUninstaller, QuotesThePathUnchangedAndGivesTheProgramAPipeAndNoConsole)
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
            const wchar_t* workingFolder,
            STARTUPINFOW* startup,
            PROCESS_INFORMATION*) -> BOOL
        {
            calls.push_back (juce::String (commandLine).toStdString());
            EXPECT_TRUE (program == nullptr && environment == nullptr && workingFolder == nullptr);
            EXPECT_TRUE (inheritsHandles);
            EXPECT_NE (flags & CREATE_NO_WINDOW, 0u);
            EXPECT_NE (startup->dwFlags & STARTF_USESTDHANDLES, 0u);
            EXPECT_EQ (GetFileType (startup->hStdOutput), static_cast<DWORD> (FILE_TYPE_PIPE));
            EXPECT_EQ (GetFileType (startup->hStdError), static_cast<DWORD> (FILE_TYPE_PIPE));
            return FALSE;
        });

    EXPECT_EQ (run (" C:\\a \"b\" %TEMP% & ^'\\\\un.exe\\ ", " /SILENT "), End (false, 0));
    EXPECT_EQ (run ("\"C:\\un.exe\""), End (false, 0));
    EXPECT_EQ (calls, (Lines { "\" C:\\a \"b\" %TEMP% & ^'\\\\un.exe\\ \"  /SILENT ", "\"\"C:\\un.exe\"\" /SILENT" }));
}

TEST_F (RunUninstaller, StillWaitsAfter19999MillisecondsAndGivesUpAfter20000)
{
    StubUninstaller stub (folder, "uninstall", { "sleep 2000" });

    const FastClock fastClock ({ 0, 19999, 1 });

    EXPECT_EQ (run (stub.getPath()), End (false, 259));
    EXPECT_EQ (fastClock.countReadings(), 3u);
}

TEST_F (RunUninstaller, ReturnsTheExitCodeOfAProgramThatEndsRightAfterTheLimit)
{
    static BOOL (*getExitCode) (HANDLE, DWORD*) = nullptr;

    const FastClock fastClock {};
    const ReplacedImport<decltype (GetExitCodeProcess)> askLater ("GetExitCodeProcess",
                                                                  [] (HANDLE process, DWORD* exitCode) -> BOOL
                                                                  {
                                                                      WaitForSingleObject (process, INFINITE);
                                                                      return getExitCode (process, exitCode);
                                                                  });
    getExitCode = askLater.original;

    StubUninstaller stub (folder, "uninstall", { "sleep 1000", "exit 3" });

    EXPECT_EQ (run (stub.getPath()), End (false, 3));
    EXPECT_EQ (logger.lines, Lines { "Warning: Cleaner failed to launch the uninstaller." });
}
