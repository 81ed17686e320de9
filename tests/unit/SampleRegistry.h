#pragma once

#include "UninstallEntry.h"

#include <memory>

/** Stands in for the machine's list of installed programs while it lives, with sample products alone:
    in a registry of the test on Windows, in a table elsewhere.

    Entries are enumerated by the names of their keys on the former and in the order of adding on the
    latter, so a test that depends on the order adds them in alphabetical order.
*/
class SampleRegistry
{
public:
    SampleRegistry();
    ~SampleRegistry();

    JUCE_DECLARE_NON_COPYABLE (SampleRegistry)

    void add (const UninstallEntry& entry);

private:
    struct Implementation;
    const std::unique_ptr<Implementation> implementation;
};
