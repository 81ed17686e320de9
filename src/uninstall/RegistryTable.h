#pragma once

#include "Registry.h"

namespace TessaraWorks
{

/** Implements the registry functions on a system that has no registry.

    This one opens every key and holds nothing, so that no product is ever found. A derived class can
    hold entries.
*/
class RegistryTable
{
public:
    virtual ~RegistryTable() = default;

    virtual juce::int32 openKey (const Registry::WideChar* path, juce::uint32 access, Registry::Key& key);
    virtual juce::int32 enumerateKey (Registry::Key key,
                                      juce::uint32 index,
                                      Registry::WideChar* name,
                                      juce::uint32 capacity);
    virtual juce::int32 queryValue (Registry::Key key,
                                    const Registry::WideChar* valueName,
                                    void* data,
                                    juce::uint32 capacityBytes);
    virtual void closeKey (Registry::Key key);
};

/** Returns the process-wide pointer to the table, for reading and for changing. It must not be null. */
RegistryTable*& getRegistryTable();

} // namespace TessaraWorks
