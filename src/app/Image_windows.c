#include <windows.h>

// Settings of the executable's image, which the linker or the C runtime look up by these names.

// DLLs are loaded from the system's folder alone (LOAD_LIBRARY_SEARCH_SYSTEM32), never from the
// folder that the program was downloaded to. mingw's header has the flags under their old name.
const IMAGE_LOAD_CONFIG_DIRECTORY64 _load_config_used = {
    .Size = sizeof (IMAGE_LOAD_CONFIG_DIRECTORY64),
    .Reserved1 = 0x800,
};

// Arguments arrive as they were typed: mingw's runtime would replace * and ? by file names.
int _CRT_glob = 0;
