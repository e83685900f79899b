#include "Platform/Linux/Tray/PanelIcons.h"
#include "Tests/Platform/Linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

using Folders = std::vector<std::string>;

class IconThemePath : public testing::Test {
protected:
    IconThemePath() {
        std::filesystem::create_directories(folder / "usr/share/icons");
        std::filesystem::create_directories(folder / "usr/bin");
        std::filesystem::create_directories(folder / "other/icons");
    }

    /// The data folders of a desktop.
    [[nodiscard]] Folders data() const { return {folder / "none", folder / "usr/share"}; }

    TemporaryFolder folder;
};

TEST_F(IconThemePath, IsTheFolderOfIconsThatPanelsDoNotHaveByName) {
    EXPECT_EQ(iconThemePath(folder / "other/icons", data(), {"XFCE"}), folder / "other/icons");
    EXPECT_EQ(iconThemePath(folder / "other/icons", {}, {}), folder / "other/icons");
    EXPECT_EQ(iconThemePath(folder / "no/such/icons", {folder / "no/such"}, {}), folder / "no/such/icons");
}

TEST_F(IconThemePath, IsEmptyForIconsOfADataFolder) {
    EXPECT_EQ(iconThemePath(folder / "usr/share/icons", data(), {"XFCE"}), "");
    EXPECT_EQ(iconThemePath(folder / "usr/bin/../share/icons", data(), {}), "");
    std::filesystem::create_directory_symlink(folder / "usr", folder / "link");
    EXPECT_EQ(iconThemePath(folder / "link/share/icons", data(), {}), "");
}

TEST_F(IconThemePath, IsEmptyInCinnamon) {
    EXPECT_EQ(iconThemePath(folder / "other/icons", data(), {"X-Cinnamon"}), "");
    EXPECT_EQ(iconThemePath(folder / "other/icons", data(), {"Vendor", "X-Cinnamon"}), "");
}

} // namespace
} // namespace platform::linux
