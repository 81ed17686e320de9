#pragma once

#include <string>

/** Returns the bytes with a question mark for each one that belongs to no proper UTF-8 sequence.

    JUCE 7.0 must not be given broken UTF-8: String::fromUTF8 counts the characters as it decodes them
    but copies the bytes as they are, and so writes past the end of its memory for the longer forms of
    a character, such as C0 81, and for what it decodes to the end of the text but has more behind it:
    a first byte that lacks the others, such as C0, and of the lone continuation bytes 80 alone. For
    one such as FB, toLowerCase reads past the end of the text.
*/
inline std::string asProperUtf8 (std::string bytes)
{
    const auto length = [&] (size_t start) -> size_t
    {
        const auto byte = [&] (size_t i) -> unsigned
        { return start + i < bytes.size() ? static_cast<unsigned char> (bytes[start + i]) : 0u; };

        const auto continues = [&] (size_t count)
        {
            for (size_t i = 1; i <= count; ++i)
                if ((byte (i) & 0xc0) != 0x80)
                    return false;

            return true;
        };

        if (byte (0) < 0x80)
            return 1;

        if (byte (0) >= 0xc2 && byte (0) < 0xe0 && continues (1))
            return 2;

        if (byte (0) >= 0xe0 && byte (0) < 0xf0 && continues (2) && (byte (0) > 0xe0 || byte (1) >= 0xa0))
            return 3;

        if (byte (0) >= 0xf0 && byte (0) < 0xf4 && continues (3) && (byte (0) > 0xf0 || byte (1) >= 0x90))
            return 4;

        return 0;
    };

    for (size_t i = 0; i < bytes.size();)
    {
        if (length (i) == 0)
            bytes[i] = '?';

        i += length (i);
    }

    return bytes;
}
