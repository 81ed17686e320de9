#include "MainTests.h"

using namespace TessaraWorks;

TEST_F (Main, ClosesTheLogFileAndThenClearsTheLoggerAfterACommand)
{
    const Console console;

    EXPECT_EQ (run ("--clean=Nothing"), 1);
    EXPECT_EQ (logger.lines, Lines { "Closed" });
    EXPECT_TRUE (wasInPlace);
    EXPECT_EQ (getLogger(), nullptr);
}

TEST_F (Main, WorksWithoutALogger)
{
    const Console console;
    getLogger() = nullptr;

    EXPECT_EQ (run ("--clean=Nothing"), 1);
    EXPECT_EQ (getLogger(), nullptr);
}
