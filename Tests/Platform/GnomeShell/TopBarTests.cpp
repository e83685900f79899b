#include "Platform/GnomeShell/TopBar.h"
#include "Platform/ShellCore/WindowAccess.h"
#include "Tests/Platform/ShellCore/ShellFixture.h"

#include <algorithm>
#include <string>
#include <vector>

namespace platform::gnomeshell {
namespace {

using namespace shellcore;

constexpr const char* shown =
    R"json(ShowItem {"icon":"/icons/hicolor/symbolic/apps/org.corvid.Tessel.uiwindow.split.2x1-symbolic.svg",)json"
    R"json("menu":[{"isEnabled":false,"title":"Paused"},{"isEnabled":true,"title":""},)json"
    R"json({"isChecked":true,"isEnabled":true,"title":"On"}],"title":"Tessel"})json";

class AnItemInTheTopBar : public ShellTest {
protected:
    AnItemInTheTopBar() {
        shell->setContents(oneWindow);
        shell->setCore(true);
        link->await(soon());
        topBar.onOfferChange([this] { offers.push_back(topBar.isOffered()); });
        contents.title = "Tessel";
        contents.image =
            Image({.source = SystemSymbol{"uiwindow.split.2x1"}, .size = {18, 18}, .accessibilityDescription = ""});
        contents.menu = {{.title = "Paused", .isEnabled = false, .isChecked = std::nullopt, .action = nullptr},
                         {.title = "", .isChecked = std::nullopt, .action = nullptr},
                         {.title = "On", .isChecked = true, .action = [this] { ++chosen; }}};
        contents.action = [this](std::optional<corvid::CGPoint> position) { clicks.push_back(position); };
    }

    void sendNumber(const char* signal, std::uint32_t number) {
        shell->send(signal, [&](sd_bus_message* message) { sd_bus_message_append(message, "u", number); });
    }

    compositor::WindowTable table;
    WindowAccess access{*link, table, {.show = [] {}, .obstacle = [] { return AccessObstacle{}; }}};
    TopBar topBar{loop, *link, table, "/icons"};
    linux::TrayContents contents;
    std::vector<bool> offers;
    std::vector<std::optional<corvid::CGPoint>> clicks;
    int chosen = 0;
};

TEST_F(AnItemInTheTopBar, IsShownWithPictureNameAndMenu) {
    EXPECT_TRUE(topBar.isOffered());
    EXPECT_FALSE(topBar.isShown());
    topBar.show(contents);
    EXPECT_TRUE(topBar.isShown());
    EXPECT_TRUE(until([&] { return shell->wasCalled(shown); })) << shell->calls().back();
    topBar.hide();
    EXPECT_FALSE(topBar.isShown());
    EXPECT_TRUE(until([&] { return shell->wasCalled("HideItem"); }));
}

TEST_F(AnItemInTheTopBar, IsClickedInTheMiddleOfItsLowerEdge) {
    topBar.show(contents);
    shell->send("ItemClicked", [](sd_bus_message* signal) { sd_bus_message_append(signal, "iiii", 1400, 0, 40, 32); });
    ASSERT_TRUE(until([&] { return !clicks.empty(); }));
    EXPECT_EQ(clicks, (std::vector<std::optional<corvid::CGPoint>>{corvid::CGPoint{1420, 868}}));
}

TEST_F(AnItemInTheTopBar, ReportsItsPosition) {
    EXPECT_EQ(topBar.frame(), std::nullopt);
    topBar.show(contents);
    shell->answerWith("ItemFrame", "iiii", 1400, 0, 40, 32);
    EXPECT_EQ(topBar.frame(), (corvid::CGRect{{1400, 868}, {40, 32}}));
    shell->answer("ItemFrame", [](sd_bus_message* call) { sd_bus_reply_method_errorf(call, "org.example.No", "no"); });
    EXPECT_EQ(topBar.frame(), std::nullopt);
}

TEST_F(AnItemInTheTopBar, DoesWhatIsChosenOfItsMenu) {
    topBar.show(contents);
    for (const std::uint32_t line : {0U, 1U, 2U, 3U, 0xffffffffU}) {
        sendNumber("ItemChosen", line);
    }
    catchUp();
    EXPECT_EQ(chosen, 1);
}

TEST_F(AnItemInTheTopBar, IsNotClickedOnceItIsHidden) {
    topBar.show(contents);
    topBar.hide();
    shell->send("ItemClicked", [](sd_bus_message* signal) { sd_bus_message_append(signal, "iiii", 1400, 0, 40, 32); });
    sendNumber("ItemChosen", 2);
    shell->send("ItemClicked", [](sd_bus_message* signal) { sd_bus_message_append(signal, "s", "here"); });
    catchUp();
    EXPECT_TRUE(clicks.empty());
    EXPECT_EQ(chosen, 0);
}

TEST_F(AnItemInTheTopBar, GoesAndComesWithTheExtension) {
    topBar.show(contents);
    shell->setCore(false);
    ASSERT_TRUE(until([&] { return offers == std::vector{false}; }));
    EXPECT_FALSE(topBar.isShown());
    shell->setCore(true, "second");
    ASSERT_TRUE(until([&] { return offers == (std::vector{false, true}); }));
    const auto isShownTwice = [&] {
        const std::vector<std::string> calls = shell->calls();
        return std::ranges::count(calls, shown) == 2;
    };
    EXPECT_TRUE(until(isShownTwice));
}

TEST_F(AnItemInTheTopBar, SendsTextThatIsNoneAsSomethingThatIs) {
    contents.title = "\xff\xfe";
    topBar.show(contents);
    EXPECT_TRUE(until([&] { return shell->calls().back().contains("\xef\xbf\xbd"); })) << shell->calls().back();
}

} // namespace
} // namespace platform::gnomeshell
