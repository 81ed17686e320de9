#pragma once

#include <string>
#include <vector>

/** A cleaner of a product, with its lists for all to see. */
template <typename Cleaner>
class OpenedCleaner : public Cleaner
{
public:
    using Cleaner::directories;
    using Cleaner::files;

    /** Returns the full paths that it lists as directories, in order. */
    std::vector<std::string> getPaths() const
    {
        std::vector<std::string> paths;

        for (const auto& directory : directories)
            paths.push_back (directory.getFullPathName().toStdString());

        return paths;
    }
};
