#pragma once

#include "ReplacedImport_windows.h"

#include <vector>

/** While it lives, the clock that time limits go by moves on only when it is read. */
class FastClock
{
public:
    /** Takes the milliseconds by which each reading finds the clock further on, as long as there are
        any, and a second for each later reading.
    */
    explicit FastClock (std::vector<DWORD> stepsToTake = {})
    {
        steps = std::move (stepsToTake);
        readings = 0;
    }

    /** The number of times that the clock was read. */
    size_t countReadings() const { return readings; }

private:
    static DWORD WINAPI read()
    {
        milliseconds += readings < steps.size() ? steps[readings] : 1000;
        ++readings;
        return milliseconds;
    }

    static inline DWORD milliseconds = timeGetTime();
    static inline std::vector<DWORD> steps;
    static inline size_t readings = 0;

    const ReplacedImport<decltype (read)> clock { "timeGetTime", read };
};
