#include <windows.h>

// Suppresses the message box of a program that cannot start or that crashes: it would block a build server for ever.
// GoogleTest does so only while it catches exceptions. Child processes inherit the mode.
[[maybe_unused]] static const auto previousErrorMode = SetErrorMode (SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
