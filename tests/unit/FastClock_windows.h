#pragma once

#include "ReplacedImport_windows.h"

/** While it lives, a second passes between any two looks at the clock that time limits go by. */
class FastClock
{
private:
    static DWORD WINAPI advance() { return milliseconds += 1000; }

    static inline DWORD milliseconds = timeGetTime();

    const ReplacedImport<decltype (advance)> clock { "timeGetTime", advance };
};
