#include "Platform/GnomeShell/ExtensionRecord.h"

#include <fstream>
#include <system_error>

namespace platform::gnomeshell {

namespace fs = std::filesystem;

ExtensionRecord::ExtensionRecord(const std::optional<std::string>& stateFolder) {
    if (stateFolder) {
        file = fs::path(*stateFolder) / "tessel" / "gnome-shell-extension-has-worked";
    }
}

bool ExtensionRecord::hasItWorked() const {
    std::error_code error;
    return file && fs::exists(*file, error);
}

void ExtensionRecord::noteThatItWorked() const {
    if (!file || hasItWorked()) {
        return;
    }
    std::error_code error;
    fs::create_directories(file->parent_path(), error);
    const std::ofstream created(*file, std::ios::app);
}

} // namespace platform::gnomeshell
