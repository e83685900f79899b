#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace platform::simulated {
namespace {

using corvid::CGPoint;
using corvid::CGRect;
using Lines = std::vector<std::string>;

Image picture(const char* name) {
    return Image({.source = ThemeIcon{name}, .size = {16, 16}, .accessibilityDescription = {}});
}

TEST(Image, IsEqualToItselfOnly) {
    const Image first = picture("editor");
    const Image copy = first;
    EXPECT_EQ(first, copy);
    EXPECT_NE(first, picture("editor"));
    EXPECT_EQ(first.description(), picture("editor").description());
}

TEST(SimulatedScreens, AreThoseThatWereAttachedLast) {
    Desktop desktop;
    ASSERT_EQ(desktop.screens.screens().size(), 1U);
    const std::vector<Screen> two{{{{0, 0}, {1280, 800}}, {{0, 0}, {1280, 776}}},
                                  {{{1280, 0}, {1920, 1080}}, {{1280, 0}, {1920, 1080}}}};
    desktop.screens.attach(two);
    EXPECT_EQ(desktop.screens.screens(), two);
    desktop.screens.attach({});
    EXPECT_TRUE(desktop.screens.screens().empty());
    EXPECT_EQ(desktop.trace.take(), (Lines{"read screens", "read screens", "read screens"}));
}

TEST(SimulatedOwnWindows, AreKnownByWhatIsAskedOfThem) {
    Desktop desktop;
    platform::OwnWindows& windows = desktop.ownWindows;
    windows.place(7, "", {10, 20});
    windows.takeKeyboard(7);
    EXPECT_EQ(desktop.trace.take(), (Lines{"place window 7 at (10, 20)", "give window 7 the keyboard"}));
    EXPECT_TRUE(windows.areBlended());
    EXPECT_EQ(windows.pointer(), (CGPoint{960, 540}));
    desktop.ownWindows.pointerPosition = std::nullopt;
    EXPECT_EQ(windows.pointer(), std::nullopt);
}

TEST(SimulatedAppearance, ReportsEachChangeOnceItIsFollowed) {
    Desktop desktop;
    const platform::Appearance& appearance = desktop.appearance;
    desktop.appearance.setColorScheme(ColorScheme::dark);
    EXPECT_FALSE(desktop.appearance.isFollowed());
    int changes = 0;
    desktop.appearance.follow([&] { ++changes; });
    desktop.appearance.setReducesMotion(true);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(appearance.colorScheme(), ColorScheme::dark);
    EXPECT_TRUE(appearance.reducesMotion());
}

TEST(SimulatedBeep, IsCountedAndRecorded) {
    Desktop desktop;
    current().desktop.sound.beep();
    EXPECT_EQ(desktop.sound.count(), 1);
    EXPECT_EQ(desktop.trace.take(), (Lines{"beep"}));
}

TEST(SimulatedUserDefaults, KeepWhatIsWrittenAndRecordIt) {
    Desktop desktop;
    corvid::PreferenceStore& store = current().standardUserDefaults;
    EXPECT_EQ(store.object("enabled"), std::nullopt);
    store.set(false, "enabled");
    EXPECT_EQ(store.object("enabled"), corvid::PropertyListValue(false));
    EXPECT_EQ(desktop.standardUserDefaults.store.values.size(), 1U);
    store.set(std::nullopt, "enabled");
    EXPECT_TRUE(desktop.standardUserDefaults.store.values.empty());
    EXPECT_EQ(desktop.trace.take(), (Lines{"read setting enabled", "write setting enabled", "read setting enabled",
                                           "remove setting enabled"}));
}

TEST(SimulatedCatalogue, KnowsWhatIsInstalled) {
    Desktop desktop;
    ApplicationCatalogue& catalogue = desktop.applicationCatalogue;
    catalogue.install("/applications/Editor", {"org.example.Editor", "Editor", "editor"});
    EXPECT_EQ(catalogue.location("org.example.Editor"), "/applications/Editor");
    EXPECT_EQ(catalogue.bundleIdentifier("/applications/Editor"), "org.example.Editor");
    EXPECT_EQ(catalogue.displayName("/applications/Editor"), "Editor");
    EXPECT_EQ(std::get<ThemeIcon>(catalogue.icon("/applications/Editor").description().source).name, "editor");
    catalogue.install("/applications/Part", {"org.example.Part", "Part", "part", false});
    EXPECT_EQ(catalogue.locations(), std::vector<std::filesystem::path>{"/applications/Editor"});
    catalogue.uninstall("/applications/Editor");
    EXPECT_EQ(catalogue.location("org.example.Editor"), std::nullopt);
    EXPECT_EQ(catalogue.bundleIdentifier("/applications/Editor"), std::nullopt);
    EXPECT_EQ(catalogue.displayName("/applications/Editor"), "Editor");
}

TEST(SimulatedAddressOpener, OpensWhatIsNotRefused) {
    Desktop desktop;
    desktop.addressOpener.refuse("settings:old");
    EXPECT_TRUE(desktop.addressOpener.open("https://example.org/"));
    EXPECT_FALSE(desktop.addressOpener.open("settings:old"));
    EXPECT_EQ(desktop.trace.take(), (Lines{"open https://example.org/", "open settings:old"}));
}

TEST(SimulatedLoginItem, ReadsBackTheStateThatHolds) {
    Desktop desktop;
    LoginItemService& service = desktop.loginItemService;
    EXPECT_EQ(service.status(), LoginItemStatus::notRegistered);
    EXPECT_TRUE(service.registerItem());
    EXPECT_EQ(service.status(), LoginItemStatus::enabled);
    EXPECT_TRUE(service.unregisterItem());
    EXPECT_EQ(service.status(), LoginItemStatus::notRegistered);
    service.requiresApproval = true;
    EXPECT_TRUE(service.registerItem());
    EXPECT_EQ(service.status(), LoginItemStatus::requiresApproval);
    service.error = "The disk is full";
    EXPECT_EQ(service.unregisterItem().error(), "The disk is full");
    EXPECT_EQ(service.status(), LoginItemStatus::requiresApproval);
    service.setStatus(LoginItemStatus::notFound);
    EXPECT_EQ(service.status(), LoginItemStatus::notFound);
}

class SimulatedStatusItem : public testing::Test {
protected:
    Desktop desktop;
    StatusBar& bar = desktop.statusBar;
    std::unique_ptr<StatusItem> item = bar.createStatusItem("Item-0");
};

TEST_F(SimulatedStatusItem, IsShownWhileThereIsAPanel) {
    EXPECT_TRUE(item->isShown());
    EXPECT_EQ(item->frame(), (CGRect{{1800, 1056}, {24, 24}}));
    bar.hasPanel = false;
    EXPECT_FALSE(item->isShown());
    EXPECT_EQ(item->frame(), std::nullopt);
    bar.hasPanel = true;
    EXPECT_TRUE(item->isShown());
}

TEST_F(SimulatedStatusItem, ShowsWhatItWasGiven) {
    const Image image = picture("editor");
    item->setImage(image);
    item->setTitle("Tessel");
    ASSERT_EQ(bar.items().size(), 1U);
    EXPECT_EQ(bar.items().front()->autosaveName, "Item-0");
    EXPECT_EQ(bar.items().front()->image, image);
    EXPECT_EQ(bar.items().front()->title, "Tessel");
    item.reset();
    EXPECT_TRUE(bar.items().empty());
    EXPECT_EQ(desktop.trace.take(),
              (Lines{"create status item Item-0", "set status item image", "remove status item Item-0"}));
}

TEST_F(SimulatedStatusItem, PassesClicksOnWithTheirPlaceIfKnown) {
    std::vector<std::optional<CGPoint>> clicks;
    item->setAction([&](std::optional<CGPoint> position) { clicks.push_back(position); });
    bar.items().front()->click();
    bar.items().front()->click(CGPoint{1, 2});
    bar.hasPanel = false;
    bar.items().front()->click();
    EXPECT_EQ(clicks, (std::vector<std::optional<CGPoint>>{std::nullopt, CGPoint{1, 2}}));
}

TEST_F(SimulatedStatusItem, ItsMenuRunsTheLinesThatAreEnabled) {
    Lines chosen;
    item->setMenu({{.title = "Enabled", .isChecked = true, .action = [&] { chosen.emplace_back("enabled"); }},
                   {.title = "", .isChecked = std::nullopt, .action = {}},
                   {.title = "Quit", .isEnabled = false, .isChecked = std::nullopt, .action = [&] {
                        chosen.emplace_back("quit");
                    }}});
    for (const std::size_t line : {0U, 1U, 2U}) {
        bar.items().front()->choose(line);
    }
    EXPECT_EQ(chosen, (Lines{"enabled"}));
}

TEST_F(SimulatedStatusItem, MayBeDroppedByItsOwnAction) {
    item->setAction([&](std::optional<CGPoint>) { item.reset(); });
    bar.items().front()->click();
    EXPECT_TRUE(bar.items().empty());
}

} // namespace
} // namespace platform::simulated
