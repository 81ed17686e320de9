#include "Console.h"
#include "DisposableMachine.h"
#include "RecordingLogger.h"
#include "ReplacedImport_windows.h"
#include "app/CleanSession.h"

#include <objbase.h>

using namespace TessaraWorks;

static Lines events;

using CleanSessionAtItsEnd = DisposableMachine;

TEST_F (CleanSessionAtItsEnd, PreparesTheShellBetweenTheWaitAndTheLogFileAndIgnoresAFailure)
{
    makeFile (juce::File::getSpecialLocation (juce::File::userDesktopDirectory).getChildFile ("OrvexCleaner.log"));
    const RecordingLogger logger;
    Console console ("n\n\n");
    console.onRead = [] { events.push_back ("read"); };
    events.clear();

    const ReplacedImport<decltype (CoInitialize)> initialise (
        "CoInitialize",
        [] (void* reserved) -> HRESULT
        {
            events.push_back (reserved == nullptr ? "CoInitialize" : "CoInitialize with");
            return E_FAIL;
        });
    const ReplacedImport<decltype (LoadLibraryW)> load ("LoadLibraryW",
                                                        [] (const wchar_t* name) -> HMODULE
                                                        {
                                                            events.push_back ("load "
                                                                              + juce::String (name).toStdString());
                                                            return nullptr;
                                                        });

    cleanCommand (juce::ArgumentList ("OrvexCleaner", juce::String ("--clean=Content")));

    EXPECT_EQ (events, (Lines { "read", "read", "CoInitialize", "load Shell32.dll" }));
}
