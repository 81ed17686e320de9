#include <windows.h>

// Settings of the executable's image, which the linker or the C runtime look up by these names.

// DLLs are loaded from the system's folder alone (LOAD_LIBRARY_SEARCH_SYSTEM32), never from the
// folder that the program was downloaded to.
const IMAGE_LOAD_CONFIG_DIRECTORY64 _load_config_used = {
    .Size = sizeof (IMAGE_LOAD_CONFIG_DIRECTORY64),
    .DependentLoadFlags = 0x800,
};

// Arguments arrive as they were typed. Some builds of mingw-w64 replace * and ? by file names unless a program
// forbids it; Debian's does not.
int _CRT_glob = 0;
