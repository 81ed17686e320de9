#include "uninstall/RegistryTable.h"

#include <gtest/gtest.h>

using namespace TessaraWorks;

TEST (RegistryTable, OpensEveryKeyButHoldsNothing)
{
    const juce::String name ("DisplayName");
    Registry::WideChar text[256] = {};
    Registry::Key key = nullptr;

    EXPECT_EQ (Registry::openKey (name.toUTF16(), Registry::readAccess, key), 0);
    EXPECT_EQ (Registry::enumerateKey (key, 0, text, 256), 259);                    // ERROR_NO_MORE_ITEMS
    EXPECT_EQ (Registry::queryValue (key, name.toUTF16(), text, sizeof (text)), 2); // ERROR_FILE_NOT_FOUND
}
