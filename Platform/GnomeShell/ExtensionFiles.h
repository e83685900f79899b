#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::gnomeshell {

/// The major version in the shell's version text, 48 of "48.7" and 51 of "51.rc"; 0 without one.
[[nodiscard]] int majorVersion(std::string_view shellVersion);

/// The extension's files: those of the program, and those in the shells' search path. A shell prefers the user's copy
/// to the one for all users, even an older one (gnome-shell, js/ui/extensionSystem.js). A link of the user's is never
/// touched. Any thread.
class ExtensionFiles {
public:
    /// `source` contains the two forms of the extension, "legacy" and "esm"; `dataFolders` are the programs' data
    /// folders, the user's own first (XDG Base Directory Specification).
    ExtensionFiles(std::filesystem::path source, std::vector<std::filesystem::path> dataFolders);

    /// If the user's copy is not this program's for a shell of that version: removes it if the one for all users is,
    /// else replaces it. A copy of a later program stays if it names that version of the shell. Without a copy nothing
    /// is written; on a failure the old copy stays.
    void refresh(std::string_view shellVersion) const;

    /// Ensures that the next session of a shell of that version has this program's extension: in the user's folder,
    /// unless the one for all users is this program's. False if it is in no folder afterwards.
    [[nodiscard]] bool install(std::string_view shellVersion) const;

    /// The revision of the copy that the next session loads; an empty text if that copy does not name one, and no value
    /// without a copy.
    [[nodiscard]] std::optional<std::string> nextRevision() const;

private:
    /// The contents of a copy's files.
    struct Copy {
        std::string metadata;
        std::string script;

        friend bool operator==(const Copy&, const Copy&) = default;
    };

    [[nodiscard]] static std::optional<Copy> copyIn(const std::filesystem::path& folder);
    [[nodiscard]] static bool isLater(const Copy& copy, const Copy& than, int shell);
    /// This program's, in the form that the shell loads.
    [[nodiscard]] std::optional<Copy> ownCopy(int shell) const;
    [[nodiscard]] std::optional<Copy> copyForAll() const;
    /// The user's own folder of the extension; must not be called without data folders.
    [[nodiscard]] std::filesystem::path home() const;
    [[nodiscard]] bool isUsersLink() const;
    [[nodiscard]] bool write(const Copy& copy) const;
    void remove() const;

    std::filesystem::path source;
    std::vector<std::filesystem::path> dataFolders;
};

} // namespace platform::gnomeshell
