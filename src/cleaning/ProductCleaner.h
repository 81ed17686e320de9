#pragma once

#include "CleanResult.h"

namespace TessaraWorks
{

/** Removes one product from the machine.

    A concrete class gives the product's display name, lists its paths in the constructor and,
    where the product has an uninstaller, overrides preClean(). Paths are resolved when they are
    listed, so a cleaner must be built only after the user has agreed to the run.
*/
class ProductCleaner
{
public:
    virtual ~ProductCleaner() = default;

    /** Returns the product's display name. */
    virtual juce::String getProductName() const = 0;

    /** Deletes all that is listed, in the order of the lists, and logs each step, the totals and
        the verdict.

        An entry that is not there is skipped. One that cannot be deleted fails the run but does not
        end it; nothing is retried. Links are removed, and what they point to stays. On Linux, a listed
        link that leads nowhere stays too: juce::File says that it does not exist. On Windows it goes.

        @returns    what was removed, and whether everything went well; if preClean() stopped the
                    run, the result as it left it
    */
    CleanResult clean();

protected:
    /** One row of a table of paths: the folder or file of this name below the location. */
    struct TablePath
    {
        juce::File location;
        juce::String child;
    };

    /** Runs before anything is deleted. Setting success to false stops the run. */
    virtual void preClean (CleanResult& result);

    /** Runs after the last deletion and before the totals, but not in a run that was stopped. No
        product overrides it so far.
    */
    virtual void postClean (CleanResult& result);

    /** Adds a path to the directories to remove, unless an equal juce::File is listed already. On
        Windows, that one may differ in letter case; it stays as it is.
    */
    void addDirectory (const juce::File& directory);

    /** Adds each path of a table, in the table's order. */
    void addDirectories (std::initializer_list<TablePath> table);

    /** The paths to remove as directories. One that turns out to be a file is removed as such. */
    juce::Array<juce::File> directories;

    /** The paths to remove as files. Deliberate: empty in every product. Even a plug-in that can be a
        single file is listed as a directory.
    */
    juce::Array<juce::File> files;
};

} // namespace TessaraWorks
