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
    // A keyboard on which yes is typed just when the user's home has moved.
    class Keyboard : public std::streambuf
    {
        int underflow() override
        {
            home.move ("/moved");
            setg (yes, yes, yes + 2);
            return 'y';
        }

        const Home home;
        char yes[3] = "y\n";
    };

    const RecordingLogger logger;
    const Console console;
    Keyboard keyboard;
    std::cin.rdbuf (&keyboard);
    CleanResult result;

    cleanVelantoneMediaServer (result);

    ASSERT_EQ (logger.lines.size(), 9u);
    EXPECT_EQ (logger.lines[4], "Debug: Skipping directory not found: /moved/.config/VelantoneMediaServer");
}
