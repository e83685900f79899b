#include "Platform/GnomeShell/ExtensionFiles.h"

#include "Platform/GnomeShell/Protocol.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

namespace platform::gnomeshell {

namespace {

namespace fs = std::filesystem;

/// Below a data folder.
fs::path place() {
    return fs::path("gnome-shell") / "extensions" / Protocol::extension;
}

/// From version 45 on, extensions are modules.
const char* formFor(std::string_view shellVersion) {
    constexpr int firstWithModules = 45;
    int major = 0;
    std::from_chars(shellVersion.data(), shellVersion.data() + shellVersion.size(), major);
    return major >= firstWithModules ? "esm" : "legacy";
}

} // namespace

ExtensionFiles::ExtensionFiles(fs::path source, std::vector<fs::path> dataFolders)
    : source(std::move(source))
    , dataFolders(std::move(dataFolders)) {
}

bool ExtensionFiles::install(std::string_view shellVersion) const {
    std::error_code error;
    if (isThereForAll()) {
        return true;
    }
    if (dataFolders.empty()) {
        return false;
    }
    const fs::path target = dataFolders.front() / place();
    if (fs::is_symlink(target, error)) {
        return true;
    }
    fs::create_directories(target, error);
    const fs::path form = source / formFor(shellVersion);
    return std::ranges::all_of(std::to_array({"metadata.json", "extension.js"}), [&](const char* name) {
        // Beside it first: what is there is whole at any time.
        const fs::path written = target / (std::string(name) + ".new");
        fs::copy_file(form / name, written, fs::copy_options::overwrite_existing, error);
        if (!error) {
            fs::rename(written, target / name, error);
        }
        return !error;
    });
}

bool ExtensionFiles::isThereForAll() const {
    return !dataFolders.empty() && std::any_of(dataFolders.begin() + 1, dataFolders.end(), [](const fs::path& folder) {
        std::error_code error;
        return fs::exists(folder / place() / "metadata.json", error);
    });
}

} // namespace platform::gnomeshell
