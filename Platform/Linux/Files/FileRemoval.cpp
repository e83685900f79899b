#include "Platform/Linux/Files/FileRemoval.h"

#include <fnmatch.h>

#include <algorithm>
#include <system_error>

namespace platform::linux {

namespace {

namespace fs = std::filesystem;

void note(Removal& removal, const fs::path& path, const std::error_code& error) {
    if (error) {
        removal.failures.push_back("cannot remove " + path.string() + ": " + error.message());
    } else {
        removal.removed.push_back(path);
    }
}

/// In alphabetical order.
std::vector<fs::path> filesOf(const MadeFiles& made, std::error_code& error) {
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(made.folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename();
        const bool isOurs = std::ranges::any_of(made.names, [&](const std::string& pattern) {
            return ::fnmatch(pattern.c_str(), name.c_str(), FNM_PERIOD) == 0;
        });
        if (isOurs) {
            files.push_back(entry->path());
        }
    }
    std::ranges::sort(files);
    return files;
}

} // namespace

Removal removeFiles(std::span<const MadeFiles> all) {
    Removal removal;
    for (const MadeFiles& made : all) {
        std::error_code error;
        const std::vector<fs::path> files = filesOf(made, error);
        if (error == std::errc::no_such_file_or_directory) {
            continue;
        }
        if (error) {
            removal.failures.push_back("cannot read " + made.folder.string() + ": " + error.message());
            continue;
        }
        for (const fs::path& file : files) {
            fs::remove(file, error);
            note(removal, file, error);
        }
        if (made.isOwnFolder && !fs::is_symlink(made.folder, error) && fs::is_empty(made.folder, error)) {
            fs::remove(made.folder, error);
            note(removal, made.folder, error);
        }
    }
    return removal;
}

} // namespace platform::linux
