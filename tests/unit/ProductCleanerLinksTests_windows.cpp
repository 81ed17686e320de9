#include "CleanerFixture.h"

#include <windows.h>

using namespace TessaraWorks;

static void makeJunction (const juce::File& link, const juce::File& target)
{
    juce::ChildProcess shell;

    if (shell.start (
            juce::StringArray { "cmd", "/c", "mklink", "/J", link.getFullPathName(), target.getFullPathName() }))
        shell.waitForProcessToFinish (10000);
}

static void makeSymbolicLink (const juce::File& link, const juce::File& target)
{
    CreateSymbolicLinkW (link.getFullPathName().toWideCharPointer(),
                         target.getFullPathName().toWideCharPointer(),
                         target.isDirectory() ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0);
}

static bool isInPlace (const juce::File& file)
{
    return GetFileAttributesW (file.getFullPathName().toWideCharPointer()) != INVALID_FILE_ATTRIBUTES;
}

class CleanerLinks : public Cleaner
{
protected:
    /** Lets the cleaner remove a link, or what has it deep within, and sees that its target is whole. */
    void remove (const juce::File& listed, const juce::File& link)
    {
        // Wine says that it has made a link, and has not.
        if (! link.isSymbolicLink())
            GTEST_SKIP() << "This system makes no such link.";

        cleaner.addDirectory (listed);

        EXPECT_TRUE (cleaner.clean().success);
        EXPECT_FALSE (isInPlace (listed));
        EXPECT_EQ (file.loadFileAsString(), "contents");
    }

    const juce::File file = folder.makeFile ("target/file");
    const juce::File target = file.getParentDirectory();

    // Wine with the public patches for reparse points keeps their data in a folder .REPARSE_POINT beside
    // the link. A link whose name sorts before that one is deleted while the data is still there.
    const juce::File listedLink = folder.getChildFile ("!link");
    const juce::File tree = folder.makeFolder ("tree");
    const juce::File deepLink = folder.makeFolder ("tree/folder").getChildFile ("!link");
};

TEST_F (CleanerLinks, GoAsAJunctionThatIsListed)
{
    makeJunction (listedLink, target);
    remove (listedLink, listedLink);
}

TEST_F (CleanerLinks, GoAsAJunctionDeepInATree)
{
    makeJunction (deepLink, target);
    remove (tree, deepLink);
}

TEST_F (CleanerLinks, GoAsASymbolicLinkToAFolderThatIsListed)
{
    makeSymbolicLink (listedLink, target);
    remove (listedLink, listedLink);
}

TEST_F (CleanerLinks, GoAsASymbolicLinkToAFolderDeepInATree)
{
    makeSymbolicLink (deepLink, target);
    remove (tree, deepLink);
}

TEST_F (CleanerLinks, GoAsASymbolicLinkToAFileThatIsListed)
{
    makeSymbolicLink (listedLink, file);
    remove (listedLink, listedLink);
}

TEST_F (CleanerLinks, GoAsASymbolicLinkToAFileDeepInATree)
{
    makeSymbolicLink (deepLink, file);
    remove (tree, deepLink);
}
