#pragma once

namespace TessaraWorks
{

/** Asks "Y/n? " on the console and reads lines from std::cin until one is an answer.

    Y and N count in either case, and an empty line is a yes. Nothing is trimmed, and any other
    line, in any encoding, asks again. At the end of the input the answer is yes, deliberately,
    unless the input ended in an unfinished line that is no answer: then this never returns.

    @returns    true to clean the product, false (after logging it) to skip it
*/
bool confirmWithUser();

} // namespace TessaraWorks
