#pragma once

#include "ReplacedImport_windows.h"

#include <vector>

/** While it lives, the clock that time limits use advances only when it is read. */
class FastClock
{
public:
    /** Takes the milliseconds by which each of the first readings advances the clock. Each later
        reading advances it by a second.
    */
    explicit FastClock (std::vector<DWORD> stepsToTake = {})
    {
        steps = std::move (stepsToTake);
        readings = 0;
    }

    /** Returns the number of readings so far. */
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
