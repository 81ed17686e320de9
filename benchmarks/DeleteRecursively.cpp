// The least that a deletion by the library takes: DeleteRecursively FOLDER makes the one call and nothing else.

#include <juce_core/juce_core.h>

int main (int, char* argv[]) { return juce::File (juce::CharPointer_UTF8 (argv[1])).deleteRecursively (false) ? 0 : 1; }
