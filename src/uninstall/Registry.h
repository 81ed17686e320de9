#pragma once

#include <juce_core/juce_core.h>

namespace TessaraWorks::Registry
{

/** A UTF-16 code unit, the element of the registry's strings. */
using WideChar = juce::CharPointer_UTF16::CharType;

/** The handle of an open key, or null. */
using Key = void*;

/** The right to read a key: KEY_READ. Deliberate: it names no view, so a 64-bit process sees the 64-bit one. */
constexpr juce::uint32 readAccess = 0x20019;

// The machine's registry, read only: the four operations that the search for uninstallers needs, and the
// path of a key. Where the system has no registry, RegistryTable implements them.

/** Opens a key of HKEY_LOCAL_MACHINE, as RegOpenKeyExW does with no options.

    @param path     the key's full path below the hive, terminated
    @param access   the rights asked for
    @param key      receives the handle; left alone on failure
    @returns        zero on success
*/
juce::int32 openKey (const WideChar* path, juce::uint32 access, Key& key);

/** Gets the name of a subkey, as RegEnumKeyExW does.

    @param index            counted from zero
    @param name             receives the terminated name
    @param capacity         the code units that fit into name
    @returns                zero on success; anything else if there is no name to give
*/
juce::int32 enumerateKey (Key key, juce::uint32 index, WideChar* name, juce::uint32 capacity);

/** Gets the raw bytes of a value of any type, as RegQueryValueExW does.

    @param data             receives the bytes as they are stored, terminated or not
    @param capacityBytes    the bytes that fit into data
    @returns                zero on success; anything else if the value is missing or does not fit
*/
juce::int32 queryValue (Key key, const WideChar* valueName, void* data, juce::uint32 capacityBytes);

/** Closes a key, as RegCloseKey does. A null handle is harmless. */
void closeKey (Key key);

/** Joins a key path and the name of one of its subkeys with a backslash.

    @param path     receives the terminated path; 1024 code units, which any subkey's name fits
*/
void formatKeyPath (WideChar (&path)[1024], const WideChar* rootPath, const WideChar* name);

} // namespace TessaraWorks::Registry
