#include "Platform/Linux/Applications/FolderTree.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace platform::linux {
namespace {

// A link among the folders may lead to the whole disk.
constexpr std::size_t mostFolders = 500;
constexpr int greatestDepth = 8;

class Walk {
public:
    Walk(std::string root, std::string ending)
        : root(std::move(root))
        , ending(std::move(ending)) {}

    FolderTree take() {
        visit("", 0);
        std::ranges::sort(tree.files);
        return std::move(tree);
    }

private:
    /// `below` is empty or ends in a slash.
    void visit(const std::string& below, int depth) {
        const std::string folder = below.empty() ? root : root + "/" + below.substr(0, below.size() - 1);
        struct stat status{};
        if (depth > greatestDepth || tree.folders.size() >= mostFolders || ::stat(folder.c_str(), &status) != 0 ||
            !S_ISDIR(status.st_mode) || !visited.emplace(status.st_dev, status.st_ino).second) {
            return;
        }
        tree.folders.push_back(folder);
        std::vector<std::string> inner;
        std::error_code error;
        for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            const std::string name = entry->path().filename();
            std::error_code ignored;
            if (entry->is_directory(ignored)) {
                inner.push_back(below + name + "/");
            } else if (name.ends_with(ending)) {
                tree.files.push_back(below + name);
            }
        }
        // In a fixed order, so that it does not depend on the file system which of two names for one folder counts.
        std::ranges::sort(inner);
        for (const std::string& next : inner) {
            visit(next, depth + 1);
        }
    }

    std::string root;
    std::string ending;
    std::set<std::pair<dev_t, ino_t>> visited;
    FolderTree tree;
};

} // namespace

FolderTree FolderTree::read(const std::string& root, const std::string& ending) {
    return Walk(root, ending).take();
}

} // namespace platform::linux
