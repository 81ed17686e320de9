// The one translation unit of JUCE's core module. The build adds the module's folder to the include
// path, and does not hold JUCE's code to our warnings.

#if defined(__MINGW32__) && defined(__clang__)

#include <cstdlib>
#include <cstring>
#include <ctime>

// JUCE takes clang on Windows for Microsoft's runtime and calls this function of it, which mingw's
// import library does not have.
static int getTimeZoneName (size_t* length, char* name, size_t size, int index)
{
    std::strncpy (name, _tzname[index], size - 1);
    *length = std::strlen (name) + 1;
    return 0;
}

#define _get_tzname getTimeZoneName

#endif

#include <juce_core/juce_core.cpp>
