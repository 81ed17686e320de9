#pragma once

namespace TessaraWorks
{

/** Asks "Y/n? " on the console and reads lines from std::cin until one is an answer.

    Y and N count in either case, and an empty line is a yes. A line is seen up to its first NUL,
    nothing is trimmed, and any other line, in any encoding, asks again. At the end of the input an
    unfinished line counts like any other; if it is no answer, this never returns, deliberately.
    Without one, the answer is yes.

    @returns    true to clean the product, false (after logging it) to skip it
*/
bool confirmWithUser();

} // namespace TessaraWorks
