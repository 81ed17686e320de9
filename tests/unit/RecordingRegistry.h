#pragma once

#include "UninstallEntry.h"
#include "uninstall/RegistryTable.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

/** Replaces the registry while it lives: a table of uninstall entries that records the calls and can
    refuse them.

    Keys are numbered from 1 in the order of opening.
*/
class RecordingRegistry : public TessaraWorks::RegistryTable
{
public:
    RecordingRegistry() { TessaraWorks::getRegistryTable() = this; }
    ~RecordingRegistry() override { TessaraWorks::getRegistryTable() = previous; }

    JUCE_DECLARE_NON_COPYABLE (RecordingRegistry)

    /** The registered entries, in the order of enumeration. */
    std::vector<UninstallEntry> entries;

    /** The calls so far, such as "open PATH with 20019", "enumerate key 1 at 0 into 4096",
        "query key 2 for DisplayName into 2048" and "close key 2". A key that is not open is a
        "closed key".
    */
    std::vector<std::string> calls;

    /** Called, if set, for each call except a close; true refuses the call. It is already the last one in
        calls, so that calls.size() is its number.
    */
    std::function<bool (const std::string& call)> refuses;

    /** The code that a refused call returns: by default, access denied. */
    juce::int32 refusalCode = 5;

    /** The paths of the keys that are open, in the order of opening. */
    std::vector<std::string> getOpenKeys() const
    {
        std::vector<std::string> paths;

        for (const auto& [number, path] : openKeys)
            paths.push_back (path);

        return paths;
    }

    juce::int32 openKey (const TessaraWorks::Registry::WideChar* path,
                         juce::uint32 access,
                         TessaraWorks::Registry::Key& key) override
    {
        const auto pathText = toText (path);

        if (isRefused ("open " + pathText + " with " + juce::String::toHexString (access).toStdString()))
            return refusalCode;

        if (pathText != uninstallRoot && findEntry (pathText) == nullptr)
            return fileNotFound;

        openKeys[++lastNumber] = pathText;
        key = reinterpret_cast<TessaraWorks::Registry::Key> (lastNumber);
        return success;
    }

    juce::int32 enumerateKey (TessaraWorks::Registry::Key key,
                              juce::uint32 index,
                              TessaraWorks::Registry::WideChar* name,
                              juce::uint32 capacity) override
    {
        if (isRefused ("enumerate " + toText (key) + " at " + std::to_string (index) + " into "
                       + std::to_string (capacity)))
            return refusalCode;

        if (index >= entries.size())
            return noMoreItems;

        const auto bytes = terminated (entries[index].keyName);

        if (bytes.size() > capacity * sizeof (*name))
            return moreData;

        std::memcpy (name, bytes.data(), bytes.size());
        return success;
    }

    juce::int32 queryValue (TessaraWorks::Registry::Key key,
                            const TessaraWorks::Registry::WideChar* valueName,
                            void* data,
                            juce::uint32 capacityBytes) override
    {
        const auto valueNameText = toText (valueName);

        if (isRefused ("query " + toText (key) + " for " + valueNameText + " into " + std::to_string (capacityBytes)))
            return refusalCode;

        const auto* entry = findEntry (openKeys[toNumber (key)]);

        if (entry == nullptr)
            return fileNotFound;

        const auto& value = valueNameText == "DisplayName" ? entry->displayName : entry->uninstallString;

        if (! value || (valueNameText != "DisplayName" && valueNameText != "UninstallString"))
            return fileNotFound;

        if (value->size() > capacityBytes)
            return moreData;

        std::memcpy (data, value->data(), value->size());
        return success;
    }

    void closeKey (TessaraWorks::Registry::Key key) override
    {
        calls.push_back ("close " + toText (key));

        openKeys.erase (toNumber (key));
    }

private:
    static constexpr juce::int32 success = 0;
    static constexpr juce::int32 fileNotFound = 2;
    static constexpr juce::int32 moreData = 234;
    static constexpr juce::int32 noMoreItems = 259;

    static std::uintptr_t toNumber (TessaraWorks::Registry::Key key) { return reinterpret_cast<std::uintptr_t> (key); }

    std::string toText (TessaraWorks::Registry::Key key) const
    {
        const auto* state = openKeys.count (toNumber (key)) == 0 ? "closed " : "";
        return key == nullptr ? "no key" : state + ("key " + std::to_string (toNumber (key)));
    }

    static std::string toText (const TessaraWorks::Registry::WideChar* text)
    {
        return juce::String (juce::CharPointer_UTF16 (text)).toStdString();
    }

    const UninstallEntry* findEntry (const std::string& path) const
    {
        const auto isThere = [&] (const UninstallEntry& entry)
        { return path == uninstallRoot + ("\\" + entry.keyName).toStdString(); };

        const auto entry = std::find_if (entries.begin(), entries.end(), isThere);
        return entry == entries.end() ? nullptr : &*entry;
    }

    bool isRefused (const std::string& call)
    {
        calls.push_back (call);
        return refuses && refuses (call);
    }

    std::map<std::uintptr_t, std::string> openKeys;
    std::uintptr_t lastNumber = 0;
    TessaraWorks::RegistryTable* const previous = TessaraWorks::getRegistryTable();
};
