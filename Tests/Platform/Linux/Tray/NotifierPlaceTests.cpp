#include "Platform/Linux/Tray/NotifierPlace.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"
#include "Tests/Platform/Linux/Tray/NotifierPanel.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::linux {
namespace {

using std::chrono::milliseconds;
using Texts = std::vector<std::string>;

constexpr const char* itemPath = "/StatusNotifierItem";
constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr const char* menuPath = "/StatusNotifierMenu";
constexpr const char* menuInterface = "com.canonical.dbusmenu";

class AttachedScreens final : public Screens {
public:
    std::vector<Screen> attached{{.frame = {{0, 0}, {1920, 1080}}, .visibleFrame = {{0, 0}, {1920, 1080}}}};

    [[nodiscard]] std::vector<Screen> screens() override { return attached; }
};

Image symbol(const char* name, bool isBadged = false) {
    return Image({.source = SystemSymbol{name},
                  .size = {18, 18},
                  .isTemplate = true,
                  .isBadged = isBadged,
                  .accessibilityDescription = "Tessel"});
}

/// An item on a bus; the tests make the panels.
class NotifierItemOnABus : public testing::Test {
protected:
    NotifierItemOnABus() {
        bus.start();
        contents.identifier = "org.corvid.Tessel.Item-0";
        contents.title = "Tessel";
        contents.toolTip = "Paused";
        contents.image = symbol("uiwindow.split.2x1");
        contents.action = [this](std::optional<corvid::CGPoint> position) { clicks.push_back(position); };
        contents.menu = {{.title = "Paused", .isEnabled = false, .isChecked = std::nullopt, .action = nullptr},
                         {.title = "Turn_on", .isChecked = std::nullopt, .action = [this] { chosen += "on "; }},
                         {.title = "", .isChecked = std::nullopt, .action = nullptr},
                         {.title = "Checked", .isChecked = true, .action = [this] { chosen += "checked "; }}};
        sessionBus.emplace(loop, bus.address(), milliseconds(20));
        place.emplace(loop, *sessionBus, screens, "/icons");
        place->onOfferChange([this] { offers.push_back(place->isOffered()); });
    }

    NotifierPanel& newPanel() { return *panels.emplace_back(std::make_unique<NotifierPanel>(loop, bus.address())); }

    /// A panel that shows the item.
    NotifierPanel& showingPanel() {
        NotifierPanel& panel = newPanel();
        panel.watch(true);
        place->show(contents);
        EXPECT_TRUE(panel.until([this] { return place->isShown(); }));
        panel.signals.clear();
        return panel;
    }

    MessageBus bus;
    MainLoop loop;
    AttachedScreens screens;
    TrayContents contents;
    std::vector<std::optional<corvid::CGPoint>> clicks;
    std::string chosen;
    std::vector<bool> offers;
    std::optional<SessionBus> sessionBus;
    std::optional<NotifierPlace> place;
    std::vector<std::unique_ptr<NotifierPanel>> panels;
};

TEST_F(NotifierItemOnABus, IsRegisteredWithAWatcherThatIsThere) {
    NotifierPanel& panel = showingPanel();
    EXPECT_EQ(panel.registered.size(), 1U);
    EXPECT_TRUE(panel.registered.front().starts_with(":"));
    EXPECT_EQ(offers, std::vector<bool>{true});
}

TEST_F(NotifierItemOnABus, IsRegisteredWithAWatcherThatComesLater) {
    place->show(contents);
    NotifierPanel& panel = newPanel();
    EXPECT_FALSE(place->isOffered());
    panel.watch(true);
    EXPECT_TRUE(panel.until([this] { return place->isShown(); }));
    EXPECT_EQ(panel.registered.size(), 1U);
}

TEST_F(NotifierItemOnABus, ComesBackWithinASecondWhenThePanelIsStartedAgain) {
    NotifierPanel& first = showingPanel();
    first.unwatch();
    ASSERT_TRUE(first.until([this] { return !place->isOffered(); }));
    EXPECT_FALSE(place->isShown());
    // Once more with a crash: the connection ends.
    for (int round = 0; round < 3; ++round) {
        NotifierPanel& next = newPanel();
        const auto begin = std::chrono::steady_clock::now();
        next.watch(true);
        ASSERT_TRUE(next.until([this] { return place->isShown(); }));
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
        EXPECT_EQ(next.registered.size(), 1U);
        EXPECT_EQ(next.property(itemPath, itemInterface, "Title"), "Tessel");
        panels.pop_back();
        ASSERT_TRUE(panels.front()->until([this] { return !place->isOffered(); }));
    }
}

TEST_F(NotifierItemOnABus, IsShownOnlyWhereThereIsAHost) {
    NotifierPanel& panel = newPanel();
    panel.watch(false);
    place->show(contents);
    ASSERT_TRUE(panel.until([&] { return !panel.registered.empty(); })) << "it is there for a host to come";
    panel.setHost(true);
    ASSERT_TRUE(panel.until([this] { return place->isShown(); }));
    panel.setHost(false);
    ASSERT_TRUE(panel.until([this] { return !place->isShown(); }));
    EXPECT_EQ(offers, (std::vector<bool>{true, false}));
    EXPECT_EQ(panel.registered.size(), 1U);
}

TEST_F(NotifierItemOnABus, AsksAWatcherThatIsNotReadyAgain) {
    NotifierPanel& panel = newPanel();
    panel.refusals = 2;
    panel.watch(true);
    place->show(contents);
    EXPECT_TRUE(panel.until([this] { return place->isShown(); }));
    EXPECT_EQ(panel.registered.size(), 3U);
}

TEST_F(NotifierItemOnABus, LeavesAWatcherAloneThatWantsNothing) {
    NotifierPanel& panel = newPanel();
    panel.refusals = 1000;
    panel.watch(true);
    place->show(contents);
    const auto most = static_cast<std::size_t>(NotifierPlace::mostTries);
    ASSERT_TRUE(panel.until([&] { return panel.registered.size() == most; }));
    const auto end = std::chrono::steady_clock::now() + NotifierPlace::untilRetry * 2;
    ASSERT_TRUE(panel.until([&] { return std::chrono::steady_clock::now() > end; }));
    EXPECT_EQ(panel.registered.size(), most);
    EXPECT_FALSE(place->isShown());
}

TEST_F(NotifierItemOnABus, AWatcherThatDoesNotAnswerHoldsNothingUp) {
    NotifierPanel& panel = newPanel();
    panel.isSilent = true;
    panel.watch(true);
    place->show(contents);
    ASSERT_TRUE(panel.until([&] { return !panel.registered.empty(); }));
    EXPECT_EQ(panel.property(itemPath, itemInterface, "Id"), "org.corvid.Tessel.Item-0");
    EXPECT_FALSE(place->isShown());
}

TEST_F(NotifierItemOnABus, SurvivesTheEndOfTheBus) {
    showingPanel();
    panels.clear();
    bus.stop();
    NotifierPanel* panel = nullptr;
    bus.start();
    panel = &newPanel();
    panel->watch(true);
    EXPECT_TRUE(panel->until([&] { return place->isShown() && !panel->registered.empty(); }));
    EXPECT_EQ(panel->property(itemPath, itemInterface, "Title"), "Tessel");
}

TEST_F(NotifierItemOnABus, HasTheExpectedProperties) {
    const std::vector<std::pair<const char*, std::string>> rows{
        {"Category", "ApplicationStatus"},
        {"Id", "org.corvid.Tessel.Item-0"},
        {"Title", "Tessel"},
        {"Status", "Active"},
        {"WindowId", "0"},
        {"IconThemePath", "/icons"},
        {"IconName", "org.corvid.Tessel.uiwindow.split.2x1-symbolic"},
        {"IconPixmap", "[(16, 16, 1024 bytes), (22, 22, 1936 bytes), (24, 24, 2304 bytes), (32, 32, 4096 bytes), "
                       "(44, 44, 7744 bytes), (48, 48, 9216 bytes), (64, 64, 16384 bytes)]"},
        {"OverlayIconName", ""},
        {"OverlayIconPixmap", "[]"},
        {"AttentionIconName", ""},
        {"AttentionIconPixmap", "[]"},
        {"AttentionMovieName", ""},
        {"ToolTip", "(, [], Tessel, Paused)"},
        {"ItemIsMenu", "false"},
        {"Menu", "/StatusNotifierMenu"},
    };
    NotifierPanel& panel = showingPanel();
    for (const auto& [name, expected] : rows) {
        EXPECT_EQ(panel.property(itemPath, itemInterface, name), expected) << name;
    }
}

TEST_F(NotifierItemOnABus, SignalsPanelsWhichPropertiesToReadAgain) {
    NotifierPanel& panel = showingPanel();
    contents.image = symbol("rectangle.split.2x1", true);
    place->update(TrayPlace::Change::image);
    contents.title = "Another";
    place->update(TrayPlace::Change::title);
    contents.toolTip = "Active";
    place->update(TrayPlace::Change::toolTip);
    const Texts expected{"NewIcon", "NewTitle", "NewToolTip", "NewToolTip"};
    EXPECT_TRUE(panel.until([&] { return panel.signals.size() >= expected.size(); }));
    EXPECT_EQ(panel.signals, expected);
    EXPECT_EQ(panel.property(itemPath, itemInterface, "IconName"),
              "org.corvid.Tessel.rectangle.split.2x1.badged-symbolic");
    EXPECT_EQ(panel.property(itemPath, itemInterface, "ToolTip"), "(, [], Another, Active)");
}

TEST_F(NotifierItemOnABus, AClickComesWithItsPlaceOnTheScreen) {
    struct Row {
        std::vector<corvid::CGRect> screens;
        int x;
        int y;
        std::optional<corvid::CGPoint> expected;
    };
    constexpr corvid::CGRect primary{{0, 0}, {1920, 1080}};
    const std::vector<Row> rows{
        {{primary}, 1811, 10, corvid::CGPoint{1811, 1070}},
        {{primary}, 0, 0, std::nullopt},
        {{primary}, 0, 1, corvid::CGPoint{0, 1079}},
        // A second screen to the left of the primary one, and higher.
        {{primary, {{-1280, 0}, {1280, 1200}}}, 100, 20, corvid::CGPoint{-1180, 1180}},
        {{}, 100, 20, std::nullopt},
    };
    NotifierPanel& panel = showingPanel();
    for (const Row& row : rows) {
        screens.attached.clear();
        for (const corvid::CGRect& frame : row.screens) {
            screens.attached.push_back({.frame = frame, .visibleFrame = frame});
        }
        clicks.clear();
        EXPECT_EQ(panel.call(itemPath, itemInterface, "Activate", "ii", row.x, row.y), "");
        ASSERT_TRUE(panel.until([this] { return !clicks.empty(); }));
        EXPECT_EQ(clicks.front(), row.expected) << row.x << " " << row.y;
    }
}

TEST_F(NotifierItemOnABus, EveryKindOfClickCountsAndScrollingDoesNot) {
    NotifierPanel& panel = showingPanel();
    EXPECT_EQ(panel.call(itemPath, itemInterface, "Scroll", "is", 120, "vertical"), "");
    EXPECT_EQ(panel.call(itemPath, itemInterface, "SecondaryActivate", "ii", 1, 2), "");
    EXPECT_EQ(panel.call(itemPath, itemInterface, "ContextMenu", "ii", 1, 2), "");
    ASSERT_TRUE(panel.until([this] { return clicks.size() >= 2; }));
    EXPECT_EQ(clicks.size(), 2U);
}

TEST_F(NotifierItemOnABus, AClickMayDropTheItem) {
    NotifierPanel& panel = showingPanel();
    contents.action = [this](std::optional<corvid::CGPoint>) {
        place->hide();
        contents = {};
        clicks.emplace_back();
    };
    EXPECT_EQ(panel.call(itemPath, itemInterface, "Activate", "ii", 5, 5), "");
    ASSERT_TRUE(panel.until([this] { return !clicks.empty(); }));
    EXPECT_EQ(panel.call(itemPath, itemInterface, "Activate", "ii", 5, 5),
              "error: org.freedesktop.DBus.Error.UnknownObject");
}

TEST_F(NotifierItemOnABus, HostileCallsGetAnError) {
    const std::string badArguments = "error: org.freedesktop.DBus.Error.InvalidArgs";
    const std::string noMethod = "error: org.freedesktop.DBus.Error.UnknownMethod";
    NotifierPanel& panel = showingPanel();
    EXPECT_EQ(panel.call(itemPath, itemInterface, "Activate", "s", "here"), badArguments);
    EXPECT_EQ(panel.call(itemPath, itemInterface, "Activate"), badArguments);
    EXPECT_EQ(panel.call(itemPath, itemInterface, "Nonsense"), noMethod);
    EXPECT_EQ(panel.property(itemPath, itemInterface, "Nonsense"), "error: org.freedesktop.DBus.Error.UnknownProperty");
    EXPECT_EQ(panel.call(itemPath, "org.freedesktop.DBus.Properties", "Set", "ssv", itemInterface, "Title", "s", "no"),
              "error: org.freedesktop.DBus.Error.PropertyReadOnly");
    EXPECT_EQ(panel.call(menuPath, menuInterface, "GetLayout", "s", "all"), badArguments);
    for (const int id : {5, 1000, -1, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(panel.call(menuPath, menuInterface, "GetLayout", "iias", id, -1, 0), badArguments) << id;
        EXPECT_EQ(panel.call(menuPath, menuInterface, "GetProperty", "is", id, "label"), badArguments) << id;
        EXPECT_EQ(panel.call(menuPath, menuInterface, "Event", "isvu", id, "clicked", "i", 0, 0), badArguments) << id;
        EXPECT_EQ(panel.call(menuPath, menuInterface, "AboutToShow", "i", id), badArguments) << id;
        EXPECT_EQ(panel.call(menuPath, menuInterface, "AboutToShowGroup", "ai", 2, 0, id),
                  "[] [" + std::to_string(id) + "]");
        EXPECT_EQ(panel.call(menuPath, menuInterface, "EventGroup", "a(isvu)", 1, id, "clicked", "i", 0, 0),
                  badArguments);
    }
    EXPECT_EQ(panel.call(menuPath, menuInterface, "GetProperty", "is", 1, "nonsense"), badArguments);
    EXPECT_EQ(chosen, "");
}

TEST_F(NotifierItemOnABus, HasAMenu) {
    NotifierPanel& panel = showingPanel();
    const std::string layout = panel.call(menuPath, menuInterface, "GetLayout", "iias", 0, -1, 0);
    const std::string first = "(1, {label: Paused, enabled: false}, [])";
    const std::string lines = first + ", (2, {label: Turn__on}, []), (3, {type: separator}, []), "
                                      "(4, {label: Checked, toggle-type: checkmark, toggle-state: 1}, [])";
    EXPECT_EQ(layout.substr(layout.find(' ')), " (0, {children-display: submenu}, [" + lines + "])");
    const std::string alone = panel.call(menuPath, menuInterface, "GetLayout", "iias", 0, 0, 0);
    EXPECT_EQ(alone.substr(alone.find(' ')), " (0, {children-display: submenu}, [])");
    const std::string one = panel.call(menuPath, menuInterface, "GetLayout", "iias", 1, -1, 1, "enabled");
    EXPECT_EQ(one.substr(one.find(' ')), " (1, {enabled: false}, [])");
    EXPECT_EQ(panel.call(menuPath, menuInterface, "GetGroupProperties", "aias", 2, 3, 99, 0),
              "[(3, {type: separator})]");
    EXPECT_EQ(panel.call(menuPath, menuInterface, "GetGroupProperties", "aias", 0, 1, "label"),
              "[(0, {}), (1, {label: Paused}), (2, {label: Turn__on}), (3, {}), (4, {label: Checked})]");
    EXPECT_EQ(panel.call(menuPath, menuInterface, "GetProperty", "is", 2, "label"), "Turn__on");
    EXPECT_EQ(panel.call(menuPath, menuInterface, "AboutToShow", "i", 0), "false");
    EXPECT_EQ(panel.property(menuPath, menuInterface, "Version"), "3");
    EXPECT_EQ(panel.property(menuPath, menuInterface, "Status"), "normal");
    EXPECT_EQ(panel.property(menuPath, menuInterface, "TextDirection"), "ltr");
    EXPECT_EQ(panel.property(menuPath, menuInterface, "IconThemePath"), "[]");
}

TEST_F(NotifierItemOnABus, AChosenLineActsOnceThePanelHasItsAnswer) {
    NotifierPanel& panel = showingPanel();
    EXPECT_EQ(panel.call(menuPath, menuInterface, "Event", "isvu", 2, "hovered", "i", 0, 0), "");
    EXPECT_EQ(panel.call(menuPath, menuInterface, "Event", "isvu", 0, "opened", "i", 0, 0), "");
    EXPECT_EQ(panel.call(menuPath, menuInterface, "Event", "isvu", 1, "clicked", "i", 0, 0), "");
    EXPECT_EQ(panel.call(menuPath, menuInterface, "Event", "isvu", 3, "clicked", "i", 0, 0), "");
    EXPECT_EQ(panel.call(menuPath, menuInterface, "Event", "isvu", 2, "clicked", "s", "", 0), "");
    ASSERT_TRUE(panel.until([this] { return !chosen.empty(); }));
    EXPECT_EQ(chosen, "on ") << "one that is disabled and a dividing line do nothing";
    EXPECT_EQ(panel.call(menuPath, menuInterface, "EventGroup", "a(isvu)", 3, 4, "clicked", "i", 0, 0, 9, "clicked",
                         "i", 0, 0, 1, "closed", "i", 0, 0),
              "[9]");
    ASSERT_TRUE(panel.until([this] { return chosen.size() > 3; }));
    EXPECT_EQ(chosen, "on checked ");
}

TEST_F(NotifierItemOnABus, SignalsPanelsAChangedMenu) {
    NotifierPanel& panel = showingPanel();
    const std::string before = panel.call(menuPath, menuInterface, "GetLayout", "iias", 0, 0, 0);
    contents.menu = {{.title = "Only", .isChecked = false, .action = nullptr}};
    place->update(TrayPlace::Change::menu);
    ASSERT_TRUE(panel.until([&] { return !panel.signals.empty(); }));
    const std::string after = panel.call(menuPath, menuInterface, "GetLayout", "iias", 0, -1, 0);
    const std::string revision = after.substr(0, after.find(' '));
    EXPECT_GT(std::stoi(revision), std::stoi(before));
    EXPECT_EQ(panel.signals, (Texts{"LayoutUpdated " + revision + " 0"}));
    EXPECT_EQ(after.substr(after.find(' ')), " (0, {children-display: submenu}, [(1, {label: Only, toggle-type: "
                                             "checkmark, toggle-state: 0}, [])])");
}

} // namespace
} // namespace platform::linux
