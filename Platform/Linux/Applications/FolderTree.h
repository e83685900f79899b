#pragma once

#include <string>
#include <vector>

namespace platform::linux {

/// The files below a folder, links followed. Cyclic links end a branch, and so do a depth of 8 and 500 folders: more
/// are a link by mistake.
struct FolderTree {
    /// The folder itself and those below, as absolute paths; none where it does not exist.
    std::vector<std::string> folders;
    /// Every other file whose name has that ending, relative to the folder, in alphabetical order.
    std::vector<std::string> files;

    [[nodiscard]] static FolderTree read(const std::string& root, const std::string& ending);
};

} // namespace platform::linux
