#include "Console.h"
#include "DisposableMachine.h"
#include "RecordingLogger.h"
#include "app/Drivers.h"

#include <cstdlib>

using namespace TessaraWorks;

using DriversWhileTheHomeMoves = DisposableMachine;

TEST_F (DriversWhileTheHomeMoves, ResolveTheirLocationsOnlyAfterTheYes)
{
    const std::string home = std::getenv ("HOME");
    const RecordingLogger logger;
    Console console ("y\n");
    console.onRead = [] { setenv ("HOME", "/moved", 1); };
    CleanResult result;

    cleanVelantoneMediaServer (result);
    setenv ("HOME", home.c_str(), 1);

    EXPECT_EQ (logger.lines.at (4), "Debug: Skipping directory not found: /moved/.config/VelantoneMediaServer");
}
