#include "OpenedCleaner.h"
#include "cleaning/ContentCleaner.h"
#include "products/CompanyCleaner.h"
#include "products/OrvexStudioCleaner.h"
#include "products/ProductManagerCleaner.h"
#include "products/VelantoneMediaServerCleaner.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

using Paths = std::vector<std::string>;

// The full path of what lies below one of the system's locations.
static std::string below (juce::File::SpecialLocationType location, const juce::String& path)
{
    const auto base = juce::File::getSpecialLocation (location).getFullPathName();
    return (base + "/" + path).replaceCharacter ('/', juce::File::getSeparatorChar()).toStdString();
}

static std::string programFiles (const juce::String& path)
{
    return below (juce::File::globalApplicationsDirectory, path);
}

static std::string sharedData (const juce::String& path)
{
    return below (juce::File::commonApplicationDataDirectory, path);
}

static std::string userData (const juce::String& path)
{
    return below (juce::File::userApplicationDataDirectory, path);
}

TEST (ProductTables, OfTheContentHasOneFolder)
{
    const OpenedCleaner<ContentCleaner> cleaner;

    EXPECT_EQ (cleaner.getProductName(), "Velantone Content");
    EXPECT_EQ (cleaner.getPaths(), Paths { sharedData ("TessaraWorks/Content") });
    EXPECT_TRUE (cleaner.files.isEmpty());
}

TEST (ProductTables, OfTheStudioHasFifteenEntries)
{
    const OpenedCleaner<OrvexStudioCleaner> cleaner;

    EXPECT_EQ (cleaner.getProductName(), "Orvex Studio");
    EXPECT_EQ (cleaner.getPaths(),
               (Paths {
                   programFiles ("Orvex"),
                   programFiles ("OrvexStudio"),
                   programFiles ("Orvex Studio"),
                   sharedData ("TessaraWorks/Plugins/Orvex"),
                   sharedData ("TessaraWorks/Plugins/OrvexStudio"),
                   userData ("Orvex"),
                   userData ("OrvexMonitor"),
                   userData ("Orvex Monitor"),
                   userData ("OrvexMonitorHeadless"),
                   userData ("VelantoneEQ"),
                   programFiles ("Common Files/VST3/TessaraWorks"),
                   programFiles ("Common Files/VST3/Orvex.vst3"),
                   programFiles ("Common Files/VST3/OrvexAudioBus.vst3"),
                   programFiles ("Common Files/VST3/OrvexMonitor.vst3"),
                   programFiles ("Common Files/VST3/OrvexReference.vst3"),
               }));
    EXPECT_TRUE (cleaner.files.isEmpty());
}

TEST (ProductTables, OfTheProductManagerHasEachFolderWithAndWithoutBlanks)
{
    const OpenedCleaner<ProductManagerCleaner> cleaner;

    EXPECT_EQ (cleaner.getProductName(), "Orvex Product Manager");
    EXPECT_EQ (cleaner.getPaths(),
               (Paths {
                   programFiles ("OrvexProductManager"),
                   programFiles ("Orvex Product Manager"),
                   sharedData ("TessaraWorks/OrvexProductManager"),
                   sharedData ("TessaraWorks/Orvex Product Manager"),
                   sharedData ("TessaraWorks/Applications/OrvexProductManager"),
                   sharedData ("TessaraWorks/Applications/Orvex Product Manager"),
                   userData ("OrvexProductManager"),
                   userData ("Orvex Product Manager"),
               }));
    EXPECT_TRUE (cleaner.files.isEmpty());
}

TEST (ProductTables, OfTheMediaServerHasItsPlayerToo)
{
    const OpenedCleaner<VelantoneMediaServerCleaner> cleaner;

    EXPECT_EQ (cleaner.getProductName(), "Velantone Media Server");
    EXPECT_EQ (cleaner.getPaths(),
               (Paths {
                   sharedData ("TessaraWorks/Applications/VelantoneMediaServer"),
                   sharedData ("TessaraWorks/Applications/VelantonePlayer"),
                   userData ("VelantoneMediaServer"),
                   userData ("VelantonePlayer"),
               }));
    EXPECT_TRUE (cleaner.files.isEmpty());
}

TEST (ProductTables, OfTheCompanyHasTheFoldersThatAllProductsShare)
{
    const OpenedCleaner<CompanyCleaner> cleaner;

    EXPECT_EQ (cleaner.getProductName(), "Tessara Works Global Directories");
    EXPECT_EQ (cleaner.getPaths(),
               (Paths {
                   sharedData ("TessaraWorks"),
                   programFiles ("Common Files/VST3/TessaraWorks"),
               }));
    EXPECT_TRUE (cleaner.files.isEmpty());
}
