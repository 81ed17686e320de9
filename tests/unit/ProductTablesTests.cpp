#include "DisposableMachine.h"
#include "OpenedCleaner.h"
#include "RecordingLogger.h"
#include "SampleRegistry.h"
#include "cleaning/ContentCleaner.h"
#include "products/CompanyCleaner.h"
#include "products/OrvexStudioCleaner.h"
#include "products/ProductManagerCleaner.h"
#include "products/VelantoneMediaServerCleaner.h"

#include <memory>

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

TEST (ProductTable, OfTheContentHasOneFolder)
{
    const OpenedCleaner<ContentCleaner> cleaner;

    EXPECT_EQ (cleaner.getProductName(), "Velantone Content");
    EXPECT_EQ (cleaner.getPaths(), Paths { sharedData ("TessaraWorks/Content") });
    EXPECT_TRUE (cleaner.files.isEmpty());
}

TEST (ProductTable, OfTheStudioHasFifteenEntries)
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

TEST (ProductTable, OfTheProductManagerHasEachFolderWithAndWithoutBlanks)
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

TEST (ProductTable, OfTheMediaServerHasItsPlayerToo)
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

TEST (ProductTable, OfTheCompanyHasTheFoldersThatAllProductsShare)
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

using MachineWithoutProducts = DisposableMachine;

TEST_F (MachineWithoutProducts, HasEachEntrySkippedAndEachRunCalledASuccess)
{
    struct Row
    {
        std::unique_ptr<ProductCleaner> cleaner;
        Paths paths;
    };

    const auto rowOf = [] (auto cleaner)
    {
        const auto paths = cleaner.getPaths();
        return Row { std::make_unique<decltype (cleaner)> (std::move (cleaner)), paths };
    };

    const SampleRegistry emptyRegistry;
    const Row rows[] = {
        rowOf (OpenedCleaner<OrvexStudioCleaner>()),
        rowOf (OpenedCleaner<ContentCleaner>()),
        rowOf (OpenedCleaner<VelantoneMediaServerCleaner>()),
        rowOf (OpenedCleaner<ProductManagerCleaner>()),
        rowOf (OpenedCleaner<CompanyCleaner>()),
    };

    for (const auto& row : rows)
    {
        const RecordingLogger logger;
        const auto name = row.cleaner->getProductName().toStdString();
        Lines expected { "Info: Cleaning: " + name };

        for (const auto& path : row.paths)
            expected.push_back ("Debug: Skipping directory not found: " + path);

        expected.push_back ("Info: Directories removed: 0");
        expected.push_back ("Info: Files removed: 0");
        expected.push_back ("Info: " + name + " was successfully removed.");

        const auto result = row.cleaner->clean();

        EXPECT_EQ (logger.lines, expected);
        EXPECT_TRUE (result.success);
        EXPECT_EQ (result.directoriesRemoved, 0);
        EXPECT_EQ (result.filesRemoved, 0);
    }
}
