#include "Platform/GnomeShell/ExtensionFiles.h"

#include "Platform/Compositor/Json.h"
#include "Platform/GnomeShell/Protocol.h"
#include "Platform/Linux/Files/RegularFile.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <fstream>
#include <system_error>
#include <utility>

namespace platform::gnomeshell {

namespace {

namespace fs = std::filesystem;

constexpr const char* metadataName = "metadata.json";
constexpr const char* scriptName = "extension.js";

/// Below a data folder.
fs::path place() {
    return fs::path("gnome-shell") / "extensions" / Protocol::extension;
}

compositor::Json parsed(const std::string& metadata) {
    return compositor::parsedJson(metadata).value_or(compositor::Json());
}

bool isNamed(int shell, const compositor::Json& metadata) {
    const compositor::Json* versions = compositor::member(metadata, "shell-version");
    return versions != nullptr && versions->is_array() && std::ranges::any_of(*versions, [&](const auto& version) {
               return version.is_string() && majorVersion(version.template get<std::string>()) == shell;
           });
}

/// Replaces the file in one step, so that the file is complete at any time.
bool replaceFile(const fs::path& file, const std::string& contents) {
    const fs::path beside = file.string() + ".new";
    std::ofstream stream(beside, std::ios::binary | std::ios::trunc);
    stream << contents;
    stream.close();
    std::error_code error;
    if (stream.fail()) {
        fs::remove(beside, error);
        return false;
    }
    fs::rename(beside, file, error);
    return !error;
}

} // namespace

int majorVersion(std::string_view shellVersion) {
    int major = 0;
    std::from_chars(shellVersion.data(), shellVersion.data() + shellVersion.size(), major);
    return major;
}

ExtensionFiles::ExtensionFiles(fs::path source, std::vector<fs::path> dataFolders)
    : source(std::move(source))
    , dataFolders(std::move(dataFolders)) {
}

void ExtensionFiles::refresh(std::string_view shellVersion) const {
    const int shell = majorVersion(shellVersion);
    const std::optional<Copy> own = ownCopy(shell);
    if (!own || dataFolders.empty() || isUsersLink()) {
        return;
    }
    const std::optional<Copy> present = copyIn(home());
    if (!present || isLater(*present, *own, shell)) {
        return;
    }
    if (copyForAll() == own) {
        remove();
    } else if (present != own) {
        // If it cannot be written, the former one still works.
        static_cast<void>(write(*own));
    }
}

bool ExtensionFiles::install(std::string_view shellVersion) const {
    if (dataFolders.empty()) {
        return false;
    }
    const std::optional<Copy> own = ownCopy(majorVersion(shellVersion));
    const std::optional<Copy> forAll = copyForAll();
    if (isUsersLink()) {
        return true;
    }
    if (!own) {
        return forAll.has_value();
    }
    if (forAll == own) {
        remove();
        return true;
    }
    return copyIn(home()) == own || write(*own);
}

std::optional<std::string> ExtensionFiles::nextRevision() const {
    std::optional<Copy> next = dataFolders.empty() ? std::nullopt : copyIn(home());
    if (!next) {
        next = copyForAll();
    }
    return next ? std::optional(compositor::nameOf(parsed(next->metadata), "revision")) : std::nullopt;
}

std::optional<ExtensionFiles::Copy> ExtensionFiles::copyIn(const fs::path& folder) {
    constexpr std::size_t longest = std::size_t{1} << 20U;
    auto metadata = linux::readRegularFile(folder / metadataName, longest, linux::Excess::refused);
    if (!metadata) {
        return std::nullopt;
    }
    auto script = linux::readRegularFile(folder / scriptName, longest, linux::Excess::refused);
    return Copy{.metadata = *std::move(metadata), .script = std::move(script).value_or("")};
}

bool ExtensionFiles::isLater(const Copy& copy, const Copy& than, int shell) {
    constexpr const char* version = "version-name";
    const compositor::Json metadata = parsed(copy.metadata);
    return isNamed(shell, metadata) && ::strverscmp(compositor::nameOf(metadata, version).c_str(),
                                                    compositor::nameOf(parsed(than.metadata), version).c_str()) > 0;
}

std::optional<ExtensionFiles::Copy> ExtensionFiles::ownCopy(int shell) const {
    // From this version on, extensions are modules.
    constexpr int firstWithModules = 45;
    return copyIn(source / (shell >= firstWithModules ? "esm" : "legacy"));
}

std::optional<ExtensionFiles::Copy> ExtensionFiles::copyForAll() const {
    for (std::size_t index = 1; index < dataFolders.size(); ++index) {
        if (auto copy = copyIn(dataFolders[index] / place())) {
            return copy;
        }
    }
    return std::nullopt;
}

fs::path ExtensionFiles::home() const {
    return dataFolders.front() / place();
}

bool ExtensionFiles::isUsersLink() const {
    std::error_code error;
    return fs::is_symlink(home(), error);
}

bool ExtensionFiles::write(const Copy& copy) const {
    std::error_code error;
    fs::create_directories(home(), error);
    return replaceFile(home() / scriptName, copy.script) && replaceFile(home() / metadataName, copy.metadata);
}

void ExtensionFiles::remove() const {
    std::error_code error;
    // In this order: the shell ignores a copy without a description. A folder with further files stays.
    fs::remove(home() / metadataName, error);
    fs::remove(home() / scriptName, error);
    fs::remove(home(), error);
}

} // namespace platform::gnomeshell
