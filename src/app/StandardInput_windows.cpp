#include "StandardInput.h"

namespace TessaraWorks
{

// Nothing to do: reading from an input that is not there fails, whatever else is opened.
void provideStandardInput() {}

} // namespace TessaraWorks
