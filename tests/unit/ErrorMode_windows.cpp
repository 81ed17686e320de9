#include <windows.h>

// A program that cannot start or that crashes shows no message box, which on a build server would wait for ever.
// GoogleTest sees to that only as long as it catches exceptions. Child processes inherit the mode.
[[maybe_unused]] static const auto previousErrorMode = SetErrorMode (SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
