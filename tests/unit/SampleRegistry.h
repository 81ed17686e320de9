#pragma once

#include "UninstallEntry.h"

#include <memory>

/** Replaces the machine's list of installed programs while it lives, with sample products only: in the
    test's own registry on Windows, in a table elsewhere.

    The registry enumerates entries by the names of their keys, the table in the order of adding. A test
    that depends on the order must add them in alphabetical order.
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
