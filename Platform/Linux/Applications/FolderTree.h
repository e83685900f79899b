#pragma once

#include <string>
#include <vector>

namespace platform::linux {

/// What is below a folder, links followed. Links that lead in a circle end it there, and so do a depth of 8, 500
/// folders and 20000 files: whoever has more has made a mistake.
struct FolderTree {
    /// The folder itself and those below, as absolute paths; none where it does not exist.
    std::vector<std::string> folders;
    /// Whatever else has a name that ends as asked, relative to the folder, in alphabetical order.
    std::vector<std::string> files;

    [[nodiscard]] static FolderTree read(const std::string& root, const std::string& ending);
};

} // namespace platform::linux
