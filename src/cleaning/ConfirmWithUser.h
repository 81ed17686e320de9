#pragma once

namespace TessaraWorks
{

/** Asks "Y/n? " on the console and reads lines from std::cin until one is an answer.

    Y and N count in either case, and an empty line is a yes. Nothing is trimmed, and any other line,
    in any encoding, asks again; so does a line with a NUL, which is what Windows' console makes of a
    character beyond ASCII in code page 65001.

    Deliberate: the end of the input is a yes, unless it is that of a console which has gone.
    Deliberate, too: an unfinished line at the end of the input counts like any other, so that this
    never returns if it is no answer.

    @returns    true to clean the product, false (after logging it) to skip it
*/
bool confirmWithUser();

} // namespace TessaraWorks
