#include "RegistryTable.h"

namespace TessaraWorks
{

constexpr juce::int32 success = 0;
constexpr juce::int32 fileNotFound = 2;
constexpr juce::int32 noMoreItems = 259;

juce::int32 RegistryTable::openKey (const Registry::WideChar*, juce::uint32, Registry::Key&) { return success; }

juce::int32 RegistryTable::enumerateKey (Registry::Key, juce::uint32, Registry::WideChar*, juce::uint32)
{
    return noMoreItems;
}

juce::int32 RegistryTable::queryValue (Registry::Key, const Registry::WideChar*, void*, juce::uint32)
{
    return fileNotFound;
}

void RegistryTable::closeKey (Registry::Key) {}

RegistryTable*& getRegistryTable()
{
    static RegistryTable emptyTable;
    static RegistryTable* table = &emptyTable;
    return table;
}

namespace Registry
{

juce::int32 openKey (const WideChar* path, juce::uint32 access, Key& key)
{
    return getRegistryTable()->openKey (path, access, key);
}

juce::int32 enumerateKey (Key key, juce::uint32 index, WideChar* name, juce::uint32 capacity)
{
    return getRegistryTable()->enumerateKey (key, index, name, capacity);
}

juce::int32 queryValue (Key key, const WideChar* valueName, void* data, juce::uint32 capacityBytes)
{
    return getRegistryTable()->queryValue (key, valueName, data, capacityBytes);
}

void closeKey (Key key) { getRegistryTable()->closeKey (key); }

void formatKeyPath (WideChar (&path)[1024], const WideChar* rootPath, const WideChar* name)
{
    auto* end = path;

    for (; *rootPath != 0; ++rootPath)
        *end++ = *rootPath;

    *end++ = '\\';

    for (; *name != 0; ++name)
        *end++ = *name;

    *end = 0;
}

} // namespace Registry

} // namespace TessaraWorks
