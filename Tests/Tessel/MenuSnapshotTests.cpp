#include "CorvidKit/Snapshot.h"
#include "Platform/Simulated/Desktop.h"
#include "Tessel/MenuSnapshot.h"
#include "Tessel/MenuView.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessel {
namespace {

using Lines = std::vector<std::string>;

class MenuSnapshotPictures : public testing::Test {
protected:
    /// The contents of one picture.
    struct Shown {
        MenuTab tab;
        platform::ColorScheme colorScheme;
        AppState* state;
        Prefs::Rules rules;
        bool hasAccessibility;
        bool isPreview;
        bool isEnabled;
        bool updateReminderDue;
        AppStatus status;
    };

    MenuSnapshotPictures() {
        std::filesystem::create_directory(folder);
        desktop.imageRenderer.draw = [this](const platform::PictureOfView& picture) -> std::optional<std::string> {
            const auto& view = dynamic_cast<const MenuView&>(picture.view);
            AppState& state = view.state();
            shown.push_back({.tab = view.tab,
                             .colorScheme = picture.colorScheme,
                             .state = &state,
                             .rules = state.rules(),
                             .hasAccessibility = state.hasAccessibility(),
                             .isPreview = state.isPreview,
                             .isEnabled = state.isEnabled(),
                             .updateReminderDue = state.updates().updateReminderDue(),
                             .status = state.status()});
            // Changes to the state of one picture must not reach the next.
            state.setRules({});
            state.setHasAccessibility(false);
            state.setEnabled(false);
            return shown.size() == failing ? std::nullopt : std::optional(std::to_string(shown.size()));
        };
    }

    ~MenuSnapshotPictures() override {
        std::filesystem::remove_all(folder);
        corvid::Snapshot::isActive = false;
    }

    /// The file names by their number in drawing order.
    std::map<int, std::string> files() {
        std::map<int, std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            std::ifstream file(entry.path());
            int number = 0;
            file >> number;
            found[number] = entry.path().filename();
        }
        return found;
    }

    platform::simulated::Desktop desktop;
    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / ("menu-snapshot-tests-" + std::to_string(getpid()));
    std::vector<Shown> shown;
    std::size_t failing = 0;
};

TEST_F(MenuSnapshotPictures, AreFourFilesInOrder) {
    MenuSnapshot::render(folder);
    EXPECT_EQ(files(), (std::map<int, std::string>{{1, "menu-en-shortcuts-light.png"},
                                                   {2, "menu-en-shortcuts-dark.png"},
                                                   {3, "menu-en-apps-light.png"},
                                                   {4, "menu-en-apps-dark.png"}}));
}

TEST_F(MenuSnapshotPictures, ShowEitherTabInEitherScheme) {
    using enum platform::ColorScheme;
    MenuSnapshot::render(folder);
    std::vector<std::pair<MenuTab, platform::ColorScheme>> pictures;
    pictures.reserve(shown.size());
    for (const Shown& picture : shown) {
        pictures.emplace_back(picture.tab, picture.colorScheme);
    }
    EXPECT_EQ(
        pictures,
        (decltype(pictures){
            {MenuTab::shortcuts, light}, {MenuTab::shortcuts, dark}, {MenuTab::apps, light}, {MenuTab::apps, dark}}));
}

TEST_F(MenuSnapshotPictures, EachShowAFreshPreviewAtWork) {
    MenuSnapshot::render(folder);
    const Prefs::Rules rules{
        {"com.apple.Music", WindowAction::maximize},
        {"com.apple.mail", WindowAction::maximize},
        {"com.apple.Notes", WindowAction::maximize},
        {"com.apple.iCal", WindowAction::maximize},
        {"com.apple.Maps", WindowAction::maximize},
        {"com.apple.AppStore", WindowAction::maximize},
        {"com.apple.Terminal", WindowAction::center},
        {"com.apple.calculator", WindowAction::center},
        {"com.apple.systempreferences", WindowAction::center},
    };
    ASSERT_EQ(shown.size(), 4U);
    for (const Shown& picture : shown) {
        EXPECT_TRUE(picture.isPreview);
        EXPECT_TRUE(picture.isEnabled);
        EXPECT_TRUE(picture.hasAccessibility);
        EXPECT_FALSE(picture.updateReminderDue);
        EXPECT_EQ(picture.status, AppStatus::active);
        EXPECT_EQ(picture.rules, rules);
    }
}

TEST_F(MenuSnapshotPictures, TouchNeitherSettingsNorKeysNorApplications) {
    desktop.standardUserDefaults.store.values = {{"enabled", false}};
    MenuSnapshot::render(folder);
    for (const std::string& line : desktop.trace.take()) {
        EXPECT_TRUE(line.starts_with("draw ") || line.starts_with("locate ")) << line;
    }
    EXPECT_EQ(shown.size(), 4U);
    EXPECT_TRUE(desktop.mainActor.waiting().empty());
}

TEST_F(MenuSnapshotPictures, AreLeftOutOneByOneWhereTheyCannotBeDrawn) {
    for (failing = 1; failing <= 4; ++failing) {
        shown.clear();
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        MenuSnapshot::render(folder);
        EXPECT_EQ(shown.size(), 4U);
        const std::map<int, std::string> written = files();
        EXPECT_EQ(written.size(), 3U);
        EXPECT_FALSE(written.contains(static_cast<int>(failing)));
    }
}

} // namespace
} // namespace tessel
