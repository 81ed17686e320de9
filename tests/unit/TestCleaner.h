#pragma once

#include "cleaning/ProductCleaner.h"

#include <functional>

/** A cleaner that lists no paths of its own and gives tests access to its protected members. */
class TestCleaner : public TessaraWorks::ProductCleaner
{
public:
    using ProductCleaner::addDirectory;
    using ProductCleaner::directories;
    using ProductCleaner::files;

    juce::String getProductName() const override { return "Product"; }

    /** Called by preClean(). */
    std::function<void (TessaraWorks::CleanResult&)> before = [] (TessaraWorks::CleanResult&) {};

    /** Called by postClean(). */
    std::function<void (TessaraWorks::CleanResult&)> after = [] (TessaraWorks::CleanResult&) {};

protected:
    void preClean (TessaraWorks::CleanResult& result) override { before (result); }
    void postClean (TessaraWorks::CleanResult& result) override { after (result); }
};
