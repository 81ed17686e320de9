#include "ReadAnswer.h"

#include <iostream>

namespace TessaraWorks
{

// Ctrl+C ends the process before the read returns.
void readAnswer (std::string& line) { std::getline (std::cin, line); }

} // namespace TessaraWorks
