#pragma once

#include <juce_core/juce_core.h>

#include <optional>
#include <string>
#include <string_view>

/** The raw bytes of a registry value. */
using Bytes = std::string;

/** Returns the bytes of a string as a program should store it. */
inline Bytes terminated (std::u16string_view text)
{
    return Bytes (reinterpret_cast<const char*> (text.data()), text.size() * sizeof (char16_t))
         + Bytes (sizeof (char16_t), '\0');
}

inline Bytes terminated (const juce::String& text)
{
    const auto utf16 = text.toUTF16();
    return Bytes (reinterpret_cast<const char*> (utf16.getAddress()), utf16.sizeInBytes());
}

/** Returns the bytes of a string as a careless program stores it. */
inline Bytes unterminated (std::u16string_view text)
{
    return Bytes (reinterpret_cast<const char*> (text.data()), text.size() * sizeof (char16_t));
}

/** A subkey of the uninstall key, with the two values that matter. Either may be missing. */
struct UninstallEntry
{
    juce::String keyName;
    std::optional<Bytes> displayName;
    std::optional<Bytes> uninstallString;
};

/** Where the uninstall entries are, below HKEY_LOCAL_MACHINE. */
constexpr auto uninstallRoot = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
