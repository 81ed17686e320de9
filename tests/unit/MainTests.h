#pragma once

#include "Console.h"
#include "RecordingLogger.h"
#include "app/Commands.h"

#include <gtest/gtest.h>

/** The program's main function. */
int programMain (int argc, char* argv[]);

class Main : public testing::Test
{
protected:
    Main()
    {
        logger.onLine = [this] (const std::string&) { wasInPlace = TessaraWorks::getLogger() == &logger; };
    }

    ~Main() override { TessaraWorks::consoleApplication = {}; }

    /** Runs the main function with one argument. */
    static int run (std::string argument)
    {
        std::string program ("OrvexCleaner");
        char* argv[] = { program.data(), argument.data(), nullptr };

        return programMain (2, argv);
    }

    /** Whether the logger was still in place when its file was closed. */
    bool wasInPlace = false;

    RecordingLogger logger;
};
