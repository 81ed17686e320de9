// Checks the search for an uninstaller. The first line of the input is the fragment to look for. Each
// further line is an entry: the key's name, the display name and the uninstall string, separated by
// tabs. An entry with the name of an earlier one is ignored. Characters before a field change it:
//
//   fragment:  ! the root key cannot be opened
//   name:      ! the entry cannot be opened    # the enumeration fails here
//   value:     ! the query fails    ~ not terminated    - the same without its last byte
//              * repeated until it just fits, not terminated    + repeated until it is too long by one
//
// A byte of 0x80 or more makes one UTF-16 code unit with the byte after it, so that surrogates occur.

#include "Expect.h"
#include "RecordingLogger.h"
#include "RecordingRegistry.h"
#include "uninstall/FindUninstaller.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

using namespace TessaraWorks;

constexpr size_t longestValue = 1024;

struct Entry : UninstallEntry
{
    bool isListed = true;
    bool opens = true;
};

struct Contents
{
    bool opens = true;
    juce::String fragment;
    std::vector<Entry> entries;
};

//  Reading the input

static std::u16string codeUnits (const std::string& bytes)
{
    std::u16string units;

    for (size_t i = 0; i < bytes.size(); ++i)
    {
        auto unit = static_cast<unsigned> (static_cast<unsigned char> (bytes[i]));

        if (unit >= 0x80)
            unit = (unit << 8) | (++i < bytes.size() ? static_cast<unsigned char> (bytes[i]) : 0u);

        units += static_cast<char16_t> (unit);
    }

    return units;
}

static bool takePrefix (std::string& field, char prefix)
{
    if (field.empty() || field[0] != prefix)
        return false;

    field.erase (0, 1);
    return true;
}

static std::u16string repeated (const std::u16string& text, size_t length)
{
    std::u16string result;

    while (result.size() < length)
        result += text.empty() ? u"x" : text;

    return result.substr (0, length);
}

static std::optional<Bytes> readValue (std::string field)
{
    if (takePrefix (field, '!'))
        return {};

    if (takePrefix (field, '~'))
        return unterminated (codeUnits (field));

    if (takePrefix (field, '-'))
    {
        const auto bytes = unterminated (codeUnits (field));
        return bytes.substr (0, std::max<size_t> (bytes.size(), 1) - 1);
    }

    if (takePrefix (field, '*'))
        return unterminated (repeated (codeUnits (field), longestValue));

    if (takePrefix (field, '+'))
        return unterminated (repeated (codeUnits (field), longestValue + 1));

    return terminated (codeUnits (field));
}

static juce::String textOf (const Bytes& bytes)
{
    std::vector<Registry::WideChar> units (bytes.size() / sizeof (Registry::WideChar) + 1);
    std::memcpy (units.data(), bytes.data(), bytes.size());
    return juce::CharPointer_UTF16 (units.data());
}

static Contents readContents (const std::string& input)
{
    auto lines = split (input, '\n');
    Contents contents;
    contents.opens = ! takePrefix (lines[0], '!');
    contents.fragment = textOf (unterminated (codeUnits (lines[0])));

    for (auto line = std::next (lines.begin()); line != lines.end(); ++line)
    {
        auto fields = split (*line, '\t');
        Entry entry;
        entry.isListed = ! takePrefix (fields[0], '#');
        entry.opens = ! takePrefix (fields[0], '!');
        entry.keyName = textOf (unterminated (codeUnits (fields[0]).substr (0, 255)));
        entry.displayName = fields.size() > 1 ? readValue (fields[1]) : std::nullopt;
        entry.uninstallString = fields.size() > 2 ? readValue (fields[2]) : std::nullopt;

        const auto hasItsName = [&] (const Entry& other) { return other.keyName == entry.keyName; };

        if (std::none_of (contents.entries.begin(), contents.entries.end(), hasItsName))
            contents.entries.push_back (entry);
    }

    return contents;
}

static std::string pathOf (const Entry& entry) { return uninstallRoot + ("\\" + entry.keyName).toStdString(); }

static std::string enumerationAt (size_t index)
{
    return "enumerate key 1 at " + std::to_string (index) + " into 4096";
}

//  The program

struct Search
{
    bool found = false;
    std::string path;
    Lines calls;
    Lines log;

    std::string toText() const
    {
        auto text = (found ? "found \"" : "not found \"") + path + "\"";

        for (const auto& call : calls)
            text += "\n    " + call;

        for (const auto& line : log)
            text += "\n    " + line;

        return text;
    }
};

static Search programsSearch (const Contents& contents)
{
    RecordingLogger logger;
    RecordingRegistry registry;
    registry.entries.assign (contents.entries.begin(), contents.entries.end());
    Lines refused;

    if (! contents.opens)
        refused.push_back (std::string ("open ") + uninstallRoot + " with 20019");

    for (size_t i = 0; i < contents.entries.size(); ++i)
    {
        if (! contents.entries[i].isListed)
            refused.push_back (enumerationAt (i));

        if (! contents.entries[i].opens)
            refused.push_back ("open " + pathOf (contents.entries[i]) + " with 20019");
    }

    registry.refuses = [&] (const std::string& call)
    { return std::find (refused.begin(), refused.end(), call) != refused.end(); };

    juce::String path = "left over";
    const auto found = findUninstaller (contents.fragment, path);

    return { found, path.toStdString(), registry.calls, logger.lines };
}

//  The model

/** A value's buffer. A shorter value leaves the end of the one before it in place. */
struct Buffer
{
    Bytes bytes = Bytes (longestValue * sizeof (char16_t), '\0');

    bool receive (const std::optional<Bytes>& value)
    {
        if (! value.has_value() || value->size() > bytes.size())
            return false;

        std::copy (value->begin(), value->end(), bytes.begin());
        return true;
    }

    std::string text() const { return textOf (bytes).toStdString(); }
};

static Search modelsSearch (const Contents& contents)
{
    Search search;
    Buffer displayName;
    Buffer uninstallString;

    search.calls = { std::string ("open ") + uninstallRoot + " with 20019" };

    if (! contents.opens)
    {
        search.log = { std::string ("Critical: Failed to open the Windows registry key: ") + uninstallRoot };
        return search;
    }

    for (size_t i = 0;; ++i)
    {
        search.calls.push_back (enumerationAt (i));

        if (i == contents.entries.size() || ! contents.entries[i].isListed)
            break;

        const auto& entry = contents.entries[i];
        const auto key = "key " + std::to_string (i + 2);

        search.calls.push_back ("open " + pathOf (entry) + " with 20019");

        if (! entry.opens)
        {
            search.log = { "Critical: Failed to open the Windows registry subkey: " + pathOf (entry) };
            search.calls.push_back ("close no key");
            break;
        }

        search.calls.push_back ("query " + key + " for DisplayName into 2048");

        if (displayName.receive (entry.displayName)
            && displayName.text().find (contents.fragment.toStdString()) != std::string::npos)
        {
            search.found = true;
            search.calls.push_back ("query " + key + " for UninstallString into 2048");

            if (uninstallString.receive (entry.uninstallString))
                for (const auto c : uninstallString.text())
                    search.path += c == '"' ? "" : std::string (1, c);

            break;
        }

        search.calls.push_back ("close " + key);
    }

    search.calls.push_back ("close key 1");
    return search;
}

int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto contents = readContents (std::string (data, data + size));

    expectEqual ("The search", programsSearch (contents).toText(), modelsSearch (contents).toText());
    return 0;
}
