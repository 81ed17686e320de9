#pragma once

#include "cleaning/ProductCleaner.h"

#include <functional>

/** A cleaner that lists nothing by itself, with all that a real one keeps protected. */
class TestCleaner : public TessaraWorks::ProductCleaner
{
public:
    using ProductCleaner::addDirectory;
    using ProductCleaner::directories;
    using ProductCleaner::files;

    juce::String getProductName() const override { return "Product"; }

    /** What preClean() does. */
    std::function<void (TessaraWorks::CleanResult&)> before = [] (TessaraWorks::CleanResult&) {};

    /** What postClean() does. */
    std::function<void (TessaraWorks::CleanResult&)> after = [] (TessaraWorks::CleanResult&) {};

protected:
    void preClean (TessaraWorks::CleanResult& result) override { before (result); }
    void postClean (TessaraWorks::CleanResult& result) override { after (result); }
};
