#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace platform::gnomeshell {

/// Whether the extension has ever worked for this user: an empty file in the folder for programs' state (XDG Base
/// Directory Specification 0.8, `XDG_STATE_HOME`). If it cannot be written, the record is missing the next time. Main
/// thread only.
class ExtensionRecord {
public:
    /// Nothing is recorded without a folder.
    explicit ExtensionRecord(const std::optional<std::string>& stateFolder);

    [[nodiscard]] bool hasItWorked() const;

    void noteThatItWorked() const;

private:
    std::optional<std::filesystem::path> file;
};

} // namespace platform::gnomeshell
