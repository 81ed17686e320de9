#include "TemporaryFolder.h"
#include "logging/DefaultLogger.h"

#include <gtest/gtest.h>

#include <map>
#include <thread>

using namespace TessaraWorks;

// As many lines as two copies of the program can write at once. Each goes to the file alone.
static void logManyLines (const juce::File& file, const juce::String& message)
{
    DefaultLogger logger;
    logger.showTimestamps = false;
    logger.minimumLevel = Critical;
    logger.logAllToFile = true;
    logger.openLogFile (file, "welcome", -1);

    for (int line = 0; line < 2000; ++line)
        logger.log (Info, message);
}

// While one has the file open, the other's line is lost, but none is broken.
TEST (Logger, KeepsEachLineWholeThatItWritesToTheFileOfAnother)
{
    const TemporaryFolder folder;
    const auto file = folder.getChildFile ("log");
    const juce::String shortMessage ("short");
    const juce::String longMessage (juce::String::repeatedString ("long ", 100) + "end");

    std::map<juce::String, int> counts;

    // A line is lost faster than it is written, so one of the two may lose nearly all of them in a round.
    for (int round = 0; round < 20 && (counts["[Info] " + shortMessage] < 100 || counts["[Info] " + longMessage] < 100);
         ++round)
    {
        std::thread other ([&] { logManyLines (file, shortMessage); });
        logManyLines (file, longMessage);
        other.join();

        counts.clear();

        for (const auto& line : juce::StringArray::fromLines (file.loadFileAsString()))
            ++counts[line.startsWith ("Log started: ") ? "Log started: " : line];
    }

    EXPECT_GE (counts["[Info] " + shortMessage], 100);
    EXPECT_GE (counts["[Info] " + longMessage], 100);

    for (const auto* ofBanner :
         { "", "**********************************************************", "welcome", "Log started: " })
        counts.erase (ofBanner);

    EXPECT_EQ (counts.size(), 2u);
}
