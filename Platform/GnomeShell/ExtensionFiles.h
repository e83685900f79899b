#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::gnomeshell {

/// The first number of what a shell says of its version, 48 of "48.7" and 51 of "51.rc"; 0 where there is none.
[[nodiscard]] int majorVersion(std::string_view shellVersion);

/// The extension's files: those that come with the program, and where shells look for extensions. A shell takes the
/// user's copy before the one that is for all users, whichever is newer (gnome-shell, js/ui/extensionSystem.js). What
/// is a link of the user's own making is never touched. Any thread.
class ExtensionFiles {
public:
    /// `source` holds the two forms of the extension, "legacy" and "esm"; `dataFolders` is where programs' data is, the
    /// user's own folder first (XDG Base Directory Specification).
    ExtensionFiles(std::filesystem::path source, std::vector<std::filesystem::path> dataFolders);

    /// Where the user has a copy that is not this program's for a shell of that version: removes it if the one for all
    /// users is, else replaces it. A copy of a later program stays if it names that version of the shell. Without a
    /// copy nothing is written; where that fails, what is there stays.
    void refresh(std::string_view shellVersion) const;

    /// Sees to it that the next session of a shell of that version has this program's extension: in the user's folder,
    /// unless it is there for all users. False where it is in no folder afterwards.
    [[nodiscard]] bool install(std::string_view shellVersion) const;

    /// The revision of the copy that the next session takes; empty where that copy does not name one, and nothing where
    /// there is no copy.
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
    /// This program's, in the form that the shell reads.
    [[nodiscard]] std::optional<Copy> ownCopy(int shell) const;
    [[nodiscard]] std::optional<Copy> copyForAll() const;
    /// The user's own folder of the extension; must not be asked for without data folders.
    [[nodiscard]] std::filesystem::path home() const;
    [[nodiscard]] bool isUsersLink() const;
    [[nodiscard]] bool write(const Copy& copy) const;
    void remove() const;

    std::filesystem::path source;
    std::vector<std::filesystem::path> dataFolders;
};

} // namespace platform::gnomeshell
