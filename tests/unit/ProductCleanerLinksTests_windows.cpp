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
    /** Lets the cleaner remove a link, or a tree that contains it, and checks that the target is intact. */
    void remove (const juce::File& listed, const juce::File& link)
    {
        // Wine reports success even if it has made no link.
        if (! link.isSymbolicLink())
            GTEST_SKIP() << "This system does not make such links.";

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

TEST_F (CleanerLinks, RemovesAListedJunction)
{
    makeJunction (listedLink, target);
    remove (listedLink, listedLink);
}

TEST_F (CleanerLinks, RemovesAJunctionDeepInATree)
{
    makeJunction (deepLink, target);
    remove (tree, deepLink);
}

TEST_F (CleanerLinks, RemovesAListedSymbolicLinkToAFolder)
{
    makeSymbolicLink (listedLink, target);
    remove (listedLink, listedLink);
}

TEST_F (CleanerLinks, RemovesASymbolicLinkToAFolderDeepInATree)
{
    makeSymbolicLink (deepLink, target);
    remove (tree, deepLink);
}

TEST_F (CleanerLinks, RemovesAListedSymbolicLinkToAFile)
{
    makeSymbolicLink (listedLink, file);
    remove (listedLink, listedLink);
}

TEST_F (CleanerLinks, RemovesASymbolicLinkToAFileDeepInATree)
{
    makeSymbolicLink (deepLink, file);
    remove (tree, deepLink);
}
