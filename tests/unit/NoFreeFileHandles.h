#pragma once

#include <juce_core/juce_core.h>

#include <sys/resource.h>

/** While it lives, the process can open neither a file nor a pipe. JUCE then reports that a program
    could not be started.
*/
class NoFreeFileHandles
{
public:
    NoFreeFileHandles()
    {
        getrlimit (RLIMIT_NOFILE, &previous);
        const rlimit none { 0, previous.rlim_max };
        setrlimit (RLIMIT_NOFILE, &none);
    }

    ~NoFreeFileHandles() { setrlimit (RLIMIT_NOFILE, &previous); }

    JUCE_DECLARE_NON_COPYABLE (NoFreeFileHandles)

private:
    rlimit previous;
};
