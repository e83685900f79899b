#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace platform::linux {

/// Files that a program has made in a folder.
struct MadeFiles {
    std::filesystem::path folder;
    /// Patterns of their names (fnmatch(3)).
    std::vector<std::string> names;
    /// Whether the folder was made for them, too.
    bool isOwnFolder = false;

    friend bool operator==(const MadeFiles&, const MadeFiles&) = default;
};

/// The outcome of a removal of such files.
struct Removal {
    /// The paths that have been removed.
    std::vector<std::string> removed;
    /// Sentences without their full stop.
    std::vector<std::string> failures;

    friend bool operator==(const Removal&, const Removal&) = default;
};

/// Removes such files, and their own folders unless these contain other files. Of a symbolic link, only the link is
/// removed. A failure at one file does not affect the others. Any thread.
[[nodiscard]] Removal removeFiles(std::span<const MadeFiles> all);

} // namespace platform::linux
