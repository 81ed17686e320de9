#include "../shared/Products.h"
#include "TestCleaner.h"
#include "logging/DefaultLogger.h"

#include <gtest/gtest.h>

#include <cxxabi.h>

#include <cstring>
#include <type_traits>

using namespace TessaraWorks;

// Facts that the language hides, and the compilers on Linux reveal.

/** Returns the name of the only base of a class, if it has one. */
template <typename Class>
static std::string baseOf()
{
    if (const auto* derived = dynamic_cast<const abi::__si_class_type_info*> (&typeid (Class)))
        return derived->__base_type->name();

    return typeid (typeid (Class)) == typeid (abi::__class_type_info) ? "none" : "several";
}

TEST (Structure, HasTwoBaseClassesFromWhichTheOthersDeriveDirectly)
{
    EXPECT_EQ (baseOf<LogInterface>(), "none");
    EXPECT_EQ (baseOf<DefaultLogger>(), typeid (LogInterface).name());

    EXPECT_EQ (baseOf<ProductCleaner>(), "none");
    forEachProduct (
        [] (const auto& product)
        {
            using Cleaner = typename std::decay_t<decltype (product)>::Cleaner;
            EXPECT_EQ (baseOf<Cleaner>(), typeid (ProductCleaner).name()) << product.name;
        });
}

/** Returns the index of a virtual function in its class, after the two entries of the destructor. */
template <typename Operation>
static std::ptrdiff_t placeOf (Operation operation)
{
    std::ptrdiff_t offset = 0; // in bytes, plus one, for a virtual function
    std::memcpy (&offset, &operation, sizeof (offset));
    return (offset - 1) / static_cast<std::ptrdiff_t> (sizeof (void*)) - 2;
}

TEST (Structure, KeepsTheVirtualFunctionsInOrder)
{
    EXPECT_EQ (placeOf (&LogInterface::write), 0);
    EXPECT_EQ (placeOf (&LogInterface::log), 1);
    EXPECT_EQ (placeOf (&LogInterface::openLogFile), 2);
    EXPECT_EQ (placeOf (&LogInterface::getLogFilePath), 3);
    EXPECT_EQ (placeOf (&LogInterface::closeLogFile), 4);

    struct Opened : TestCleaner
    {
        using TestCleaner::postClean;
        using TestCleaner::preClean;
    };

    EXPECT_EQ (placeOf (&ProductCleaner::getProductName), 0);
    EXPECT_EQ (placeOf (&Opened::preClean), 1);
    EXPECT_EQ (placeOf (&Opened::postClean), 2);
}
