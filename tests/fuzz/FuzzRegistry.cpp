// The search for an uninstaller. The input is text: the fragment to look for in the first line, and
// one entry in each further line, with tabs between the key's name, the display name and the uninstall
// string. Characters in front of a field change it:
//
//   fragment:  ! the root key cannot be opened
//   name:      ! the entry cannot be opened    # the enumeration fails here
//   value:     ! the query fails    ~ not terminated    * repeated until it just fits, not terminated
//              + repeated until it is too long by one
//
// A byte from 0x80 on makes one UTF-16 code unit with the byte behind it, so that surrogates come up.

#include "Expect.h"
#include "RecordingLogger.h"
#include "uninstall/FindUninstaller.h"
#include "uninstall/RegistryTable.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

using namespace TessaraWorks;

static const std::string rootPath = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
constexpr size_t longestValue = 1024;

struct Entry
{
    bool isListed = true;
    bool opens = true;
    std::u16string name;
    std::optional<std::u16string> displayName;
    std::optional<std::u16string> uninstallString;
};

struct Contents
{
    bool opens = true;
    std::u16string fragment;
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

static std::optional<std::u16string> readValue (std::string field)
{
    if (takePrefix (field, '!'))
        return {};

    if (takePrefix (field, '~'))
        return codeUnits (field);

    if (takePrefix (field, '*'))
        return repeated (codeUnits (field), longestValue);

    if (takePrefix (field, '+'))
        return repeated (codeUnits (field), longestValue + 1);

    return codeUnits (field) + u'\0';
}

static std::u16string upToTerminator (const std::u16string& text) { return text.substr (0, text.find (u'\0')); }

static Contents readContents (const std::string& input)
{
    auto lines = split (input, '\n');
    Contents contents;
    contents.opens = ! takePrefix (lines[0], '!');
    contents.fragment = upToTerminator (codeUnits (lines[0]));

    for (auto line = std::next (lines.begin()); line != lines.end(); ++line)
    {
        auto fields = split (*line, '\t');
        Entry entry;
        entry.isListed = ! takePrefix (fields[0], '#');
        entry.opens = ! takePrefix (fields[0], '!');
        entry.name = upToTerminator (codeUnits (fields[0])).substr (0, 255);
        entry.displayName = fields.size() > 1 ? readValue (fields[1]) : std::nullopt;
        entry.uninstallString = fields.size() > 2 ? readValue (fields[2]) : std::nullopt;
        contents.entries.push_back (entry);
    }

    return contents;
}

//  The program

static juce::String juceString (const std::u16string& text)
{
    return juce::CharPointer_UTF16 (reinterpret_cast<const Registry::WideChar*> (text.c_str()));
}

static std::string utf8 (const Registry::WideChar* text)
{
    return juce::String (juce::CharPointer_UTF16 (text)).toStdString();
}

static std::string utf8 (const std::u16string& text) { return juceString (text).toStdString(); }

/** A registry with these contents, which notes the calls. */
class Table : public RegistryTable
{
public:
    explicit Table (const Contents& toHold)
        : contents (toHold)
    {
    }

    std::vector<std::string> calls;

    juce::int32 openKey (const Registry::WideChar* path, juce::uint32 access, Registry::Key& key) override
    {
        calls.push_back ("open " + utf8 (path) + " with " + std::to_string (access));

        if (enumerated.has_value() ? ! getEntry (*enumerated).opens : ! contents.opens)
            return 5;

        key = toKey (enumerated.has_value() ? 2 + *enumerated : 1);
        return 0;
    }

    juce::int32 enumerateKey (Registry::Key key,
                              juce::uint32 index,
                              Registry::WideChar* name,
                              juce::uint32 capacity) override
    {
        calls.push_back ("enumerate " + toText (key) + " at " + std::to_string (index) + " into "
                         + std::to_string (capacity));

        if (index >= contents.entries.size() || ! getEntry (index).isListed)
            return 259;

        enumerated = index;
        std::memcpy (name, getEntry (index).name.c_str(), (getEntry (index).name.size() + 1) * sizeof (*name));
        return 0;
    }

    juce::int32 queryValue (Registry::Key key,
                            const Registry::WideChar* valueName,
                            void* data,
                            juce::uint32 capacityBytes) override
    {
        calls.push_back ("query " + toText (key) + " for " + utf8 (valueName) + " into "
                         + std::to_string (capacityBytes));

        const auto& entry = getEntry (toNumber (key) - 2);
        const auto& value = utf8 (valueName) == "DisplayName" ? entry.displayName : entry.uninstallString;

        if (! value.has_value() || value->size() * sizeof (char16_t) > capacityBytes)
            return 2;

        std::memcpy (data, value->data(), value->size() * sizeof (char16_t));
        return 0;
    }

    void closeKey (Registry::Key key) override { calls.push_back ("close " + toText (key)); }

private:
    static Registry::Key toKey (size_t number) { return reinterpret_cast<Registry::Key> (number); }
    static size_t toNumber (Registry::Key key) { return reinterpret_cast<size_t> (key); }
    static std::string toText (Registry::Key key) { return "key " + std::to_string (toNumber (key)); }

    const Entry& getEntry (size_t index) const { return contents.entries.at (index); }

    const Contents& contents;
    std::optional<size_t> enumerated;
};

struct Search
{
    bool found = false;
    std::string path;
    std::vector<std::string> calls;
    std::vector<std::string> log;

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
    Table table (contents);
    getRegistryTable() = &table;

    juce::String path = "left over";
    const auto found = findUninstaller (juceString (contents.fragment), path);

    return { found, path.toStdString(), table.calls, logger.lines };
}

//  The model

/** A value's buffer, in which a short value leaves what is behind it. */
struct Buffer
{
    std::u16string units = std::u16string (longestValue, u'\0');

    bool receive (const std::optional<std::u16string>& value)
    {
        if (! value.has_value() || value->size() > units.size())
            return false;

        std::copy (value->begin(), value->end(), units.begin());
        return true;
    }

    std::string text() const { return utf8 (units); }
};

static Search modelsSearch (const Contents& contents)
{
    Search search;
    Buffer displayName;
    Buffer uninstallString;

    search.calls = { "open " + rootPath + " with 131097" };

    if (! contents.opens)
    {
        search.log = { "Critical: Failed to open the Windows registry key: " + rootPath };
        return search;
    }

    for (size_t i = 0;; ++i)
    {
        search.calls.push_back ("enumerate key 1 at " + std::to_string (i) + " into 4096");

        if (i == contents.entries.size() || ! contents.entries[i].isListed)
            break;

        const auto& entry = contents.entries[i];
        const auto path = rootPath + "\\" + utf8 (entry.name);
        const auto key = "key " + std::to_string (i + 2);

        search.calls.push_back ("open " + path + " with 131097");

        if (! entry.opens)
        {
            search.log = { "Critical: Failed to open the Windows registry subkey: " + path };
            search.calls.push_back ("close key 0");
            break;
        }

        search.calls.push_back ("query " + key + " for DisplayName into 2048");

        if (displayName.receive (entry.displayName)
            && displayName.text().find (utf8 (contents.fragment)) != std::string::npos)
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
