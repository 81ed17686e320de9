#pragma once

#include "Console.h"
#include "RecordingLogger.h"
#include "app/Commands.h"

#include <gtest/gtest.h>

/** The program's main function. */
int programMain (int argc, char* argv[]);

/** Runs the main function with one argument, beside a logger that notes whether it is still in its
    place when its file is closed.
*/
class Main : public testing::Test
{
protected:
    ~Main() override { TessaraWorks::consoleApplication = {}; }

    static int run (std::string argument)
    {
        std::string program ("OrvexCleaner");
        char* argv[] = { program.data(), argument.data(), nullptr };

        return programMain (2, argv);
    }

    class Logger : public RecordingLogger
    {
        void closeLogFile() override
        {
            lines.push_back (TessaraWorks::getLogger() == this ? "Closed" : "Closed too late");
        }
    };

    Logger logger;
};
