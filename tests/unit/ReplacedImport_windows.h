#pragma once

#include <juce_core/juce_core.h>

#include <windows.h>

#include <cstring>
#include <stdexcept>
#include <string>

/** Replaces, while it lives, a function that this program imports from a DLL. This affects the calls
    of the program's own code, including JUCE's, and none that another DLL makes.
*/
template <typename Function>
class ReplacedImport
{
public:
    ReplacedImport (const char* name, Function* replacement)
        : slot (find (name))
        , original (reinterpret_cast<Function*> (*slot))
    {
        set (replacement);
    }

    ~ReplacedImport() { set (original); }

    JUCE_DECLARE_NON_COPYABLE (ReplacedImport)

private:
    /** Finds the slot of the function's address in the executable's import table. */
    static ULONG_PTR* find (const std::string& name)
    {
        auto* const image = reinterpret_cast<BYTE*> (GetModuleHandleW (nullptr));
        const auto* header = reinterpret_cast<const IMAGE_NT_HEADERS*> (
            image + reinterpret_cast<const IMAGE_DOS_HEADER*> (image)->e_lfanew);
        const auto& imports = header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        const auto* dll = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*> (image + imports.VirtualAddress);

        for (; dll->Name != 0; ++dll)
        {
            const auto* imported = reinterpret_cast<const IMAGE_THUNK_DATA*> (image + dll->OriginalFirstThunk);
            auto* bound = reinterpret_cast<IMAGE_THUNK_DATA*> (image + dll->FirstThunk);

            for (; imported->u1.AddressOfData != 0; ++imported, ++bound)
                if (! IMAGE_SNAP_BY_ORDINAL (imported->u1.Ordinal)
                    && name == reinterpret_cast<const IMAGE_IMPORT_BY_NAME*> (image + imported->u1.AddressOfData)->Name)
                    return &bound->u1.Function;
        }

        throw std::invalid_argument ("This program does not call " + name);
    }

    void set (Function* function)
    {
        DWORD protection = 0;
        VirtualProtect (slot, sizeof (*slot), PAGE_READWRITE, &protection);
        *slot = reinterpret_cast<ULONG_PTR> (function);
        VirtualProtect (slot, sizeof (*slot), protection, &protection);
    }

    ULONG_PTR* const slot;

public:
    /** The DLL's own function. */
    Function* const original;
};
