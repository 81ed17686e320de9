#include "uninstall/FindUninstaller.h"

#include "RecordingLogger.h"
#include "RecordingRegistry.h"

#include <gtest/gtest.h>

#include <array>
#include <iostream>
#include <random>

using namespace TessaraWorks;

/** A registry made by chance, a fragment to look for, and what is refused on the way. */
class RandomCase
{
public:
    explicit RandomCase (juce::uint32 seed)
        : random (seed)
    {
        const auto size = below (9);

        for (int i = 0; i < size; ++i)
            entries.push_back ({ toString (makeText (3)) + juce::String (i), makeValue(), makeValue() });

        fragment = makeText (4);

        for (auto& refusal : refusals)
            refusal = oneIn (40);
    }

    std::vector<UninstallEntry> entries;
    std::u16string fragment;

    /** For each open, enumeration and query in their order: whether it is refused. */
    std::array<bool, 64> refusals;

    static juce::String toString (const std::u16string& text)
    {
        std::vector<Registry::WideChar> units (text.begin(), text.end());
        units.push_back (0);
        return juce::String (juce::CharPointer_UTF16 (units.data()));
    }

    std::string describe() const
    {
        juce::String text;
        text << "looking for [" << toString (fragment) << "]\n";

        for (const auto& entry : entries)
            text << "[" << entry.keyName << "] DisplayName " << describe (entry.displayName) << ", UninstallString "
                 << describe (entry.uninstallString) << "\n";

        text << "refused:";

        for (size_t i = 0; i < refusals.size(); ++i)
            if (refusals[i])
                text << " " << static_cast<int> (i);

        return text.toStdString();
    }

private:
    static juce::String describe (const std::optional<Bytes>& value)
    {
        return value ? "(" + juce::String (value->size()) + ") "
                           + juce::String::toHexString (value->data(), static_cast<int> (value->size()))
                     : "none";
    }

    int below (unsigned limit) { return static_cast<int> (random() % limit); }
    bool oneIn (unsigned number) { return below (number) == 0; }

    std::u16string makeText (unsigned longest)
    {
        static const std::u16string pieces[] = { u"Orvex", u"Orvex", u"Studio",     u"orvex", u" ",
                                                 u"\"",    u"x",     u"\U0001f3b9", u"\u0416" };
        std::u16string text;

        for (auto i = below (longest); i > 0; --i)
            text += pieces[below (static_cast<unsigned> (std::size (pieces)))];

        return text;
    }

    std::optional<Bytes> makeValue()
    {
        if (oneIn (6))
            return {};

        auto text = makeText (8);

        if (oneIn (4)) // near what the buffer holds, on both sides of it
            text.insert (0, static_cast<size_t> (1024 - below (40)), u'y');

        if (oneIn (8))
            text += u'\xd83c';

        auto value = oneIn (3) ? unterminated (text) : terminated (text);

        if (oneIn (6))
            value.resize (value.size() / 2);

        return value;
    }

    std::mt19937 random;
};

struct Outcome
{
    bool found = false;
    juce::String path;
    Lines log;
    Lines openKeys;
};

/** The data that one value after the other is read into, and its text. */
class ModelBuffer
{
public:
    std::u16string read (const Bytes& value)
    {
        std::memcpy (units.data(), value.data(), value.size());
        return units.substr (0, units.find (u'\0'));
    }

private:
    std::u16string units = std::u16string (1024, u'\0');
};

static Outcome foretell (const RandomCase& test)
{
    auto nextRefusal = test.refusals.begin();
    const auto isRefused = [&] { return *nextRefusal++; };
    const auto isReadable = [&] (const std::optional<Bytes>& value)
    { return ! isRefused() && value && value->size() <= 2048; };

    ModelBuffer name, command;

    if (isRefused())
        return {
            false, "", { std::string ("Critical: Failed to open the Windows registry key: ") + uninstallRoot }, {}
        };

    for (const auto& entry : test.entries)
    {
        const auto path = uninstallRoot + ("\\" + entry.keyName).toStdString();

        if (isRefused())
            return {};

        if (isRefused())
            return { false, "", { "Critical: Failed to open the Windows registry subkey: " + path }, {} };

        if (! isReadable (entry.displayName)
            || name.read (*entry.displayName).find (test.fragment) == std::u16string::npos)
            continue;

        if (! isReadable (entry.uninstallString))
            return { true, "", {}, { path } };

        auto text = command.read (*entry.uninstallString);
        text.erase (std::remove (text.begin(), text.end(), u'"'), text.end());
        return { true, RandomCase::toString (text), {}, { path } };
    }

    return {};
}

// The variable ORVEX_TEST_SEED gives another seed, such as that of a case that failed.
TEST (FindUninstaller, AgreesWithASimpleModelOnRandomRegistries)
{
    constexpr int numberOfCases = 20000;
    const auto firstSeed = juce::SystemStats::getEnvironmentVariable ("ORVEX_TEST_SEED", "1").getLargeIntValue();
    std::cout << "The seeds begin at " << firstSeed << std::endl;

    int foundWithPath = 0, foundWithoutPath = 0, refused = 0, notFound = 0;

    for (int i = 0; i < numberOfCases && ! testing::Test::HasFailure(); ++i)
    {
        const auto seed = static_cast<juce::uint32> (firstSeed + i);
        const RandomCase test (seed);

        RecordingLogger logger;
        RecordingRegistry registry;
        registry.entries = test.entries;
        auto nextRefusal = test.refusals.begin();
        registry.refuses = [&] (const std::string&) { return *nextRefusal++; };

        juce::String path ("left by the caller");
        const auto found = findUninstaller (RandomCase::toString (test.fragment), path);

        const auto expected = foretell (test);
        SCOPED_TRACE (testing::Message() << "ORVEX_TEST_SEED=" << seed);
        EXPECT_EQ (found, expected.found) << test.describe();
        EXPECT_EQ (path, expected.path) << test.describe();
        EXPECT_EQ (logger.lines, expected.log) << test.describe();
        EXPECT_EQ (registry.getOpenKeys(), expected.openKeys) << test.describe();

        auto& outcome = found ? (path.isEmpty() ? foundWithoutPath : foundWithPath)
                              : (logger.lines.empty() ? notFound : refused);
        ++outcome;
    }

    // Chance has to bring every outcome often enough to mean something.
    for (const auto outcome : { foundWithPath, foundWithoutPath, refused, notFound })
        EXPECT_GT (outcome, numberOfCases / 50);
}
