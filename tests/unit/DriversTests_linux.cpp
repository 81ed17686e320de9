#include "Console.h"
#include "DisposableMachine.h"
#include "RecordingLogger.h"
#include "app/Drivers.h"

#include <cstdlib>

using namespace TessaraWorks;

// The user's home while a test changes it.
class Home
{
public:
    ~Home() { setenv ("HOME", old.c_str(), 1); }
    void move (const char* path) const { setenv ("HOME", path, 1); }

private:
    const std::string old = std::getenv ("HOME");
};

using DriversWhileTheHomeMoves = DisposableMachine;

TEST_F (DriversWhileTheHomeMoves, ResolveTheirLocationsOnlyOnceTheUserHasSaidYes)
{
    const RecordingLogger logger;
    const Home home {};
    Console console ("y\n");
    console.onRead = [&] { home.move ("/moved"); };
    CleanResult result;

    cleanVelantoneMediaServer (result);

    ASSERT_EQ (logger.lines.size(), 9u);
    EXPECT_EQ (logger.lines[4], "Debug: Skipping directory not found: /moved/.config/VelantoneMediaServer");
}
