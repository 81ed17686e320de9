#include "../shared/Products.h"
#include "RecordingLogger.h"
#include "TestCleaner.h"
#include "logging/DefaultLogger.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <type_traits>

using namespace TessaraWorks;

// The structure that derived classes rely on. Compiling this file checks most of it.

template <typename T, typename U>
constexpr bool is = std::is_same_v<T, U>;

//  The logger

static_assert (is<LogLevel, juce::int32>);
static_assert (is<decltype (&LogInterface::minimumLevel), LogLevel LogInterface::*>);
static_assert (is<decltype (&LogInterface::showTimestamps), bool LogInterface::*>);
static_assert (is<decltype (&LogInterface::spareFlag), bool LogInterface::*>);
static_assert (is<decltype (&LogInterface::logAllToFile), bool LogInterface::*>);

template <typename Base>
struct Writes : Base
{
    void write (juce::String) override {}
};

template <typename Base>
struct Logs : Base
{
    void log (LogLevel, juce::String) override {}
};

template <typename Base>
struct Opens : Base
{
    void openLogFile (const juce::File&, const juce::String&, juce::int64) override {}
};

template <typename Base>
struct Tells : Base
{
    juce::String getLogFilePath() override { return {}; }
};

template <typename Base>
struct Closes : Base
{
    void closeLogFile() override {}
};

static_assert (std::has_virtual_destructor_v<LogInterface>);
static_assert (std::is_abstract_v<Closes<Tells<Opens<Logs<LogInterface>>>>>);
static_assert (std::is_abstract_v<Closes<Tells<Opens<Writes<LogInterface>>>>>);
static_assert (std::is_abstract_v<Closes<Tells<Logs<Writes<LogInterface>>>>>);
static_assert (std::is_abstract_v<Closes<Opens<Logs<Writes<LogInterface>>>>>);
static_assert (! std::is_abstract_v<Tells<Opens<Logs<Writes<LogInterface>>>>>);

static_assert (std::is_base_of_v<LogInterface, DefaultLogger>);
static_assert (sizeof (DefaultLogger)
               == sizeof (LogInterface) + sizeof (std::unique_ptr<juce::FileLogger>) + sizeof (std::mutex));

TEST (Structure, KeepsTheSettingsOfTheLoggerInOrder)
{
    const DefaultLogger logger {};
    const void* const settings[] = {
        &logger.minimumLevel, &logger.showTimestamps, &logger.spareFlag, &logger.logAllToFile
    };

    EXPECT_TRUE (std::is_sorted (std::begin (settings), std::end (settings)));
}

//  The cleaners

static_assert (std::is_aggregate_v<CleanResult>);
static_assert (is<decltype (CleanResult::success), bool>);
static_assert (is<decltype (CleanResult::directoriesRemoved), juce::int32>);
static_assert (is<decltype (CleanResult::filesRemoved), juce::int32>);
static_assert (offsetof (CleanResult, success) < offsetof (CleanResult, directoriesRemoved));
static_assert (offsetof (CleanResult, directoriesRemoved) < offsetof (CleanResult, filesRemoved));

struct Named : ProductCleaner
{
    juce::String getProductName() const override { return {}; }
};

static_assert (std::has_virtual_destructor_v<ProductCleaner>);
static_assert (std::is_abstract_v<ProductCleaner>);
static_assert (! std::is_abstract_v<Named>);
static_assert (is<decltype (&ProductCleaner::clean), CleanResult (ProductCleaner::*)()>);
static_assert (is<decltype (TestCleaner::directories), juce::Array<juce::File>>);
static_assert (is<decltype (TestCleaner::files), juce::Array<juce::File>>);

template <typename... Cleaners>
constexpr bool addNoDataMember (const std::tuple<Product<Cleaners>...>&)
{
    return ((std::is_base_of_v<ProductCleaner, Cleaners> && sizeof (Cleaners) == sizeof (ProductCleaner)) && ...);
}

static_assert (addNoDataMember (allProducts));

TEST (Structure, KeepsTheDirectoriesOfACleanerBeforeItsFiles)
{
    const TestCleaner cleaner {};

    EXPECT_LT (static_cast<const void*> (&cleaner.directories), static_cast<const void*> (&cleaner.files));
}

TEST (Structure, DoesNotLetACleanerReplaceTheRun)
{
    struct Replacing : TestCleaner
    {
        CleanResult clean() { return { false, 1, 1 }; }
    };

    const RecordingLogger logger;
    Replacing cleaner;

    EXPECT_TRUE (static_cast<ProductCleaner&> (cleaner).clean().success);
}
