#include "DisposableMachine.h"
#include "OpenedCleaner.h"
#include "cleaning/ContentCleaner.h"
#include "products/CompanyCleaner.h"
#include "products/VelantoneMediaServerCleaner.h"

using namespace TessaraWorks;

using Paths = std::vector<std::string>;

// Windows does not tell a special location while its folder is away.
class UnresolvedLocation : public DisposableMachine
{
protected:
    // Takes the folder away until the test is over.
    void takeAway (const juce::File& folder)
    {
        taken = folder;
        ASSERT_TRUE (taken.moveFileTo (away));
    }

    void TearDown() override
    {
        if (taken != juce::File())
            EXPECT_TRUE (away.moveFileTo (taken));

        EXPECT_TRUE (oldWorkingDirectory.setAsCurrentWorkingDirectory());
    }

    const juce::File oldWorkingDirectory = juce::File::getCurrentWorkingDirectory();

private:
    juce::File taken;
    const juce::File away = sharedData.getParentDirectory().getNonexistentChildFile ("away", {});
};

TEST_F (UnresolvedLocation, OfUserDataPutsItsEntriesIntoTheRootOfTheCurrentDrive)
{
    takeAway (userData);
    ASSERT_TRUE (juce::File ("C:\\windows").setAsCurrentWorkingDirectory());

    EXPECT_EQ (OpenedCleaner<VelantoneMediaServerCleaner>().getPaths(),
               (Paths {
                   sharedData.getFullPathName().toStdString() + "\\TessaraWorks\\Applications\\VelantoneMediaServer",
                   sharedData.getFullPathName().toStdString() + "\\TessaraWorks\\Applications\\VelantonePlayer",
                   "C:\\VelantoneMediaServer",
                   "C:\\VelantonePlayer",
               }));
}

TEST_F (UnresolvedLocation, OfSharedDataPutsItsEntriesIntoTheRootOfTheCurrentDrive)
{
    takeAway (sharedData);
    ASSERT_TRUE (juce::File ("C:\\windows").setAsCurrentWorkingDirectory());

    EXPECT_EQ (OpenedCleaner<ContentCleaner>().getPaths(), Paths { "C:\\TessaraWorks\\Content" });
    EXPECT_EQ (OpenedCleaner<CompanyCleaner>().getPaths(),
               (Paths {
                   "C:\\TessaraWorks",
                   programFiles.getFullPathName().toStdString() + "\\Common Files\\VST3\\TessaraWorks",
               }));
}
