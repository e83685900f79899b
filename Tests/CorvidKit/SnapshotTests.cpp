#include "CorvidKit/Snapshot.h"
#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corvid {
namespace {

using Lines = std::vector<std::string>;

/// The content that stands in for a view: a number.
struct Numbered : platform::View {
    explicit Numbered(int number)
        : number(number) {}

    int number;
};

class SnapshotOfAView : public testing::Test {
protected:
    SnapshotOfAView() {
        Snapshot::isActive = false;
        std::filesystem::create_directory(folder);
        // Each picture is the number of its view.
        desktop.imageRenderer.draw = [](const platform::PictureOfView& picture) {
            return std::to_string(dynamic_cast<const Numbered&>(picture.view).number);
        };
    }

    ~SnapshotOfAView() override {
        std::filesystem::remove_all(folder);
        Snapshot::isActive = false;
    }

    void render(const std::optional<std::string>& variant) {
        Snapshot::renderMenu(folder, variant, [this] { return std::make_shared<Numbered>(++contentsMade); });
    }

    std::string contentsOf(const std::string& name) {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::set<std::string> names() {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            found.insert(entry.path().filename());
        }
        return found;
    }

    platform::simulated::Desktop desktop;
    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / ("snapshot-tests-" + std::to_string(getpid()));
    int contentsMade = 0;
};

TEST_F(SnapshotOfAView, IsTakenInLightAndThenInDarkWithContentOfItsOwn) {
    desktop.mainBundle.preferredLocalizations = {"de", "en"};
    render("shortcuts");
    EXPECT_EQ(desktop.trace.take(), (Lines{"draw light on 0.93 in de at 2", "draw dark on 0.16 in de at 2"}));
    EXPECT_EQ(contentsMade, 2);
    EXPECT_EQ(names(), (std::set<std::string>{"menu-de-shortcuts-light.png", "menu-de-shortcuts-dark.png"}));
    EXPECT_EQ(contentsOf("menu-de-shortcuts-light.png"), "1");
    EXPECT_EQ(contentsOf("menu-de-shortcuts-dark.png"), "2");
}

TEST_F(SnapshotOfAView, HasANameOfThreePartsWithoutAVariant) {
    desktop.mainBundle.preferredLocalizations = {"pt_BR"};
    render(std::nullopt);
    EXPECT_EQ(names(), (std::set<std::string>{"menu-pt_BR-light.png", "menu-pt_BR-dark.png"}));
}

TEST_F(SnapshotOfAView, KeepsAnEmptyVariantInTheName) {
    render("");
    EXPECT_EQ(names(), (std::set<std::string>{"menu-en--light.png", "menu-en--dark.png"}));
}

TEST_F(SnapshotOfAView, IsInEnglishWhereTheUserWantsNoneOfTheLanguages) {
    desktop.mainBundle.preferredLocalizations = {};
    EXPECT_EQ(Snapshot::language(), "en");
    render("apps");
    EXPECT_EQ(names(), (std::set<std::string>{"menu-en-apps-light.png", "menu-en-apps-dark.png"}));
}

TEST_F(SnapshotOfAView, SetsThePictureModeBeforeTheFirstViewIsMadeAndForGood) {
    EXPECT_FALSE(Snapshot::isActive);
    bool wasActive = false;
    Snapshot::renderMenu(folder, "apps", [&] {
        wasActive = Snapshot::isActive;
        return std::make_shared<Numbered>(0);
    });
    EXPECT_TRUE(wasActive);
    EXPECT_TRUE(Snapshot::isActive);
}

TEST_F(SnapshotOfAView, IsLeftOutWhereItCannotBeDrawnAndTheOtherIsThere) {
    for (const platform::ColorScheme failing : {platform::ColorScheme::light, platform::ColorScheme::dark}) {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        desktop.imageRenderer.draw = [=](const platform::PictureOfView& picture) -> std::optional<std::string> {
            return picture.colorScheme == failing ? std::nullopt : std::optional<std::string>("drawn");
        };
        render("apps");
        const std::string other = failing == platform::ColorScheme::light ? "dark" : "light";
        EXPECT_EQ(names(), (std::set<std::string>{"menu-en-apps-" + other + ".png"}));
    }
}

TEST_F(SnapshotOfAView, IsLeftOutWhereItsFileCannotBeWritten) {
    std::filesystem::create_directory(folder / "menu-en-apps-light.png");
    render("apps");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "menu-en-apps-light.png"));
    EXPECT_EQ(contentsOf("menu-en-apps-dark.png"), "2");
}

TEST_F(SnapshotOfAView, DoesNotMakeADirectoryThatIsNotThere) {
    const std::filesystem::path missing = folder / "missing";
    Snapshot::renderMenu(missing, "apps", [] { return std::make_shared<Numbered>(0); });
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(SnapshotOfAView, ReplacesAnOlderAndLongerFile) {
    std::ofstream(folder / "menu-en-apps-light.png") << "a picture of another day";
    render("apps");
    EXPECT_EQ(contentsOf("menu-en-apps-light.png"), "1");
}

TEST_F(SnapshotOfAView, IsBytesAsTheyWereDrawn) {
    const std::string bytes("\x89PNG\r\n\x1a\n\0\xff", 10);
    desktop.imageRenderer.draw = [&](const platform::PictureOfView&) { return std::optional(bytes); };
    render("apps");
    EXPECT_EQ(contentsOf("menu-en-apps-dark.png"), bytes);
}

TEST_F(SnapshotOfAView, IsSimplyNotTakenWhereNothingDraws) {
    platform::Platform table = platform::current();
    table.imageRenderer = nullptr;
    const platform::Installation installation(table);
    render("apps");
    EXPECT_EQ(contentsMade, 2);
    EXPECT_TRUE(names().empty());
}

} // namespace
} // namespace corvid
