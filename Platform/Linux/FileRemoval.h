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
    /// The paths of what was there and is no more.
    std::vector<std::string> removed;
    /// Sentences without their full stop.
    std::vector<std::string> failures;

    friend bool operator==(const Removal&, const Removal&) = default;
};

/// Removes such files, and the folders that were made for them unless something else is in them. Of a symbolic link the
/// link goes, and what it leads to stays. A file that cannot be removed does not keep the others. Any thread.
[[nodiscard]] Removal removeFiles(std::span<const MadeFiles> all);

} // namespace platform::linux
