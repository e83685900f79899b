#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace platform::gnomeshell {

/// The extension's files: those that come with the program, and where shells look for extensions. Any thread.
class ExtensionFiles {
public:
    /// `source` holds the two forms of the extension, "legacy" and "esm"; `dataFolders` is where programs' data is, the
    /// user's own folder first (XDG Base Directory Specification).
    ExtensionFiles(std::filesystem::path source, std::vector<std::filesystem::path> dataFolders);

    /// Puts the form that a shell of that version reads into the user's folder, unless the extension is installed for
    /// all users. What is there already and differs is replaced; what is a link of the user's own making is not. False
    /// where it is in no folder afterwards.
    [[nodiscard]] bool install(std::string_view shellVersion) const;

private:
    [[nodiscard]] bool isThereForAll() const;

    std::filesystem::path source;
    std::vector<std::filesystem::path> dataFolders;
};

} // namespace platform::gnomeshell
