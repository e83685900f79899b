#include "Platform/Linux/Tray/PanelIcons.h"

#include <algorithm>
#include <system_error>

namespace platform::linux {

std::string iconThemePath(const std::filesystem::path& icons, const std::vector<std::string>& dataFolders,
                          const std::vector<std::string>& desktops) {
    const bool isOfTheSystem = std::ranges::any_of(dataFolders, [&](const std::string& folder) {
        std::error_code error;
        return std::filesystem::equivalent(std::filesystem::path(folder) / "icons", icons, error);
    });
    const bool isCinnamon = std::ranges::find(desktops, "X-Cinnamon") != desktops.end();
    return isOfTheSystem || isCinnamon ? std::string() : icons.string();
}

} // namespace platform::linux
