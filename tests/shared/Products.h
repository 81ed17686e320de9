#pragma once

#include "app/Drivers.h"
#include "cleaning/ContentCleaner.h"
#include "products/CompanyCleaner.h"
#include "products/OrvexStudioCleaner.h"
#include "products/ProductManagerCleaner.h"
#include "products/VelantoneMediaServerCleaner.h"

#include <string>
#include <tuple>

/** A product as the tests know it. Its paths are in products.py, for the whole-program tests to compare. */
template <typename CleanerOfProduct>
struct Product
{
    using Cleaner = CleanerOfProduct;

    const char* name;
    const char* question;
    void (*driver) (TessaraWorks::CleanResult&);

    /** Returns every path that the cleaner lists, in the order of deletion. */
    juce::Array<juce::File> getPaths() const
    {
        struct Opened : Cleaner
        {
            using Cleaner::directories;
            using Cleaner::files;
        };

        Opened cleaner;
        cleaner.directories.addArray (cleaner.files);
        return cleaner.directories;
    }
};

/** All products, in the order in which they are offered. */
constexpr std::tuple allProducts {
    Product<TessaraWorks::OrvexStudioCleaner> {
        "Orvex Studio", "Remove Orvex Studio and all of its associated files?", TessaraWorks::cleanOrvexStudio },
    Product<TessaraWorks::ContentCleaner> {
        "Velantone Content", "Remove all Velantone content & playlist files?", TessaraWorks::cleanContent },
    Product<TessaraWorks::VelantoneMediaServerCleaner> {
        "Velantone Media Server",
        "Remove Velantone Media Server and all of its associated files?",
        TessaraWorks::cleanVelantoneMediaServer },
    Product<TessaraWorks::ProductManagerCleaner> { "Orvex Product Manager",
                                                   "Remove Orvex Product Manager and all of its associated files?",
                                                   TessaraWorks::cleanProductManager },
    Product<TessaraWorks::CompanyCleaner> { "Tessara Works Global Directories",
                                            "Remove all Tessara Works global directories and files?",
                                            TessaraWorks::cleanCompany },
};

/** Calls a function with each product. */
template <typename Function>
void forEachProduct (Function function)
{
    std::apply ([&] (const auto&... product) { (function (product), ...); }, allProducts);
}

/** The values of --clean, in the order in which the program lists them. */
constexpr const char* targetNames[] = { "OrvexStudio", "ProductManager", "VelantoneMediaServer", "Content", "All" };
