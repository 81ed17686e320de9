#pragma once

#include <juce_core/juce_core.h>

#include <string>
#include <vector>

/** A copy of the stub uninstaller that follows a test's orders; see tests/tools/StubUninstaller.h. */
class StubUninstaller
{
public:
    /** Puts a copy into the folder, which it makes if necessary, under the name and the system's
        extension of programs.
    */
    StubUninstaller (const juce::File& folder, const juce::String& name, const juce::StringArray& orders = {})
        : program (folder.getChildFile (name + getOwnProgram().getFileExtension()))
    {
        folder.createDirectory();
        getOwnProgram().getSiblingFile ("StubUninstaller" + program.getFileExtension()).copyFileTo (program);
        program.setExecutePermission (true);

        if (! orders.isEmpty())
            program.withFileExtension ("orders").replaceWithText (orders.joinIntoString ("\n"));
    }

    /** Deletes the copy. Windows allows that only after the program has ended. */
    ~StubUninstaller()
    {
        for (int i = 0; i < 500 && ! program.deleteFile(); ++i)
            juce::Thread::sleep (10);
    }

    JUCE_DECLARE_NON_COPYABLE (StubUninstaller)

    juce::String getPath() const { return program.getFullPathName(); }

    /** Returns the note of a start with these arguments. */
    std::string calledWith (const juce::String& arguments) const
    {
        return (getPath().quoted() + " " + arguments).toStdString();
    }

    /** Returns the copy's notes: the command line of each start, and "done" after the last order. */
    std::vector<std::string> getNotes() const
    {
        auto lines = juce::StringArray::fromLines (program.withFileExtension ("calls").loadFileAsString());
        lines.removeEmptyStrings();

        std::vector<std::string> notes;

        for (const auto& line : lines)
            notes.push_back (line.toStdString());

        return notes;
    }

    /** Waits for this number of notes, but not for ever. */
    void waitForNotes (size_t number) const
    {
        for (int i = 0; i < 3000 && getNotes().size() < number; ++i)
            juce::Thread::sleep (10);
    }

private:
    static juce::File getOwnProgram() { return juce::File::getSpecialLocation (juce::File::currentExecutableFile); }

    const juce::File program;
};
