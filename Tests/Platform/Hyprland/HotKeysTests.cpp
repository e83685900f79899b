#include "Platform/Hyprland/HotKeys.h"
#include "Tests/Platform/Compositor/HotKeyCompositor.h"
#include "Tests/Platform/Hyprland/OpenHyprland.h"
#include "Tests/Platform/Linux/HotKeys/HotKeyLosses.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::hyprland {
namespace {

using Configuration = FakeHyprland::Configuration;
using Offer = HotKeyCompositor::Offer;

constexpr std::uint32_t controlOption = 0x1000 | 0x800;
constexpr std::uint32_t leftKey = 123;
constexpr std::uint32_t cKey = 8;

/// How the compositor of a test holds keys.
struct Way {
    std::string name;
    Offer offer = Offer::neither;
    Configuration configuration = Configuration::lua;
};

class HyprlandHotKeys : public testing::TestWithParam<Way> {
protected:
    HyprlandHotKeys() {
        desktop.peer.speak(GetParam().configuration);
        keys->installHandler(
            [](EventHandlerCall*, const HotKeyEvent* event, void* data) {
                static_cast<std::vector<std::uint32_t>*>(data)->push_back(event->directObject()->id);
                return noErr;
            },
            &pressed);
    }

    void open() {
        desktop.session.start();
        ASSERT_TRUE(desktop.session.isOpen());
    }

    [[nodiscard]] HotKeyEvents::Registration add(std::uint32_t keyCode, std::uint32_t id) {
        return keys->registerHotKey(keyCode, controlOption, {.signature = 7, .id = id});
    }

    /// The combinations that the compositor holds for us.
    [[nodiscard]] std::size_t held() {
        const auto binds = desktop.peer.binds();
        const auto ours = std::ranges::count_if(binds, [](const auto& each) {
            return each.argument.starts_with("tessel:") || each.description.starts_with("tessel:");
        });
        return wayland.keys().size() + static_cast<std::size_t>(ours);
    }

    /// A press of the key with that code on the keyboard; `number`: its registration's.
    void press(std::uint32_t keysym, std::uint64_t number) {
        if (GetParam().offer == Offer::neither) {
            desktop.peer.send("custom>>tessel:" + std::to_string(number));
        } else {
            wayland.press(keysym);
        }
    }

    static FakeHyprland::Bind userBind() {
        return {.modifiers = 12, .key = "left", .dispatcher = "workspace", .argument = "-1"};
    }

    HotKeyCompositor wayland{GetParam().offer};
    OpenHyprland desktop;
    std::unique_ptr<HotKeys> keys = std::make_unique<HotKeys>(
        desktop.session,
        [this](HotKeys::Protocol::Handlers handlers, Instant deadline) {
            return HotKeys::Protocol::open(desktop.loop, wayland.path(), "org.corvid.Tessel", std::move(handlers),
                                           deadline);
        },
        [](std::uint32_t, std::uint32_t) { return "Left Half"; });
    linux::HotKeyLosses losses{*keys};
    std::vector<std::uint32_t> pressed;
};

TEST_P(HyprlandHotKeys, AreHeldAndReportAPressOnce) {
    open();
    const auto left = add(leftKey, 11);
    const auto center = add(cKey, 12);
    EXPECT_EQ(left.status, noErr);
    EXPECT_EQ(center.status, noErr);
    EXPECT_EQ(held(), 2U);
    press(0x63, center.reference->value);
    press(0xff51, left.reference->value);
    ASSERT_TRUE(desktop.runUntil([&] { return pressed.size() == 2; }));
    EXPECT_EQ(pressed, (std::vector<std::uint32_t>{12, 11}));
    EXPECT_FALSE(losses.take());
}

TEST_P(HyprlandHotKeys, AreHeldOnceTheCompositorIsThere) {
    desktop.peer.stop();
    desktop.session.start();
    EXPECT_EQ(add(leftKey, 11).status, noErr);
    EXPECT_EQ(held(), 0U);
    desktop.peer.start();
    EXPECT_TRUE(desktop.runUntil([&] { return held() == 1; }));
}

TEST_P(HyprlandHotKeys, AreGivenBack) {
    open();
    const auto left = add(leftKey, 11);
    static_cast<void>(add(cKey, 12));
    keys->unregisterHotKey(*left.reference);
    keys->unregisterHotKey(*left.reference);
    EXPECT_TRUE(desktop.runUntil([&] { return held() == 1; }));
    keys = nullptr;
    EXPECT_TRUE(desktop.runUntil([&] { return held() == 0; }));
}

TEST_P(HyprlandHotKeys, ACombinationThatTheConfigurationBindsStaysTheUsers) {
    desktop.peer.setBinds({userBind()});
    open();
    EXPECT_EQ(add(leftKey, 11).status, eventHotKeyExistsErr);
    EXPECT_EQ(add(cKey, 12).status, noErr);
    EXPECT_EQ(held(), 1U);
    EXPECT_EQ(keys->loanObstacle(leftKey, controlOption), LoanObstacle::notReleased);
    EXPECT_EQ(keys->loanObstacle(cKey, controlOption), std::nullopt);
    EXPECT_EQ(keys->holderOf({.keyCode = leftKey, .modifiers = controlOption}),
              (ShortcutHolder{.heldBy = "Hyprland", .purpose = "workspace -1"}));
    EXPECT_EQ(keys->holderOf({.keyCode = cKey, .modifiers = controlOption}), std::nullopt);
    ASSERT_FALSE(desktop.peer.binds().empty());
    EXPECT_EQ(desktop.peer.binds()[0].dispatcher, "workspace");
}

TEST_P(HyprlandHotKeys, ABindingOfAnotherModeIsNotInTheWay) {
    FakeHyprland::Bind bind = userBind();
    bind.submap = "resize";
    desktop.peer.setBinds({bind});
    open();
    const auto left = add(leftKey, 11);
    EXPECT_EQ(left.status, noErr);
    keys->unregisterHotKey(*left.reference);
    // In hyprlang a removal would take the user's, too.
    EXPECT_TRUE(std::ranges::any_of(desktop.peer.binds(), [](const auto& each) { return each.submap == "resize"; }));
}

TEST_P(HyprlandHotKeys, AKeyThatAChangedConfigurationBindsIsLost) {
    open();
    EXPECT_EQ(add(leftKey, 11).status, noErr);
    EXPECT_EQ(add(cKey, 12).status, noErr);
    desktop.peer.setBinds({userBind()});
    desktop.peer.send("configreloaded>>");
    ASSERT_TRUE(desktop.runUntil([&] { return losses.take(); }));
    EXPECT_TRUE(desktop.runUntil([&] { return held() == 1; }));
}

TEST_P(HyprlandHotKeys, AreMadeAgainAfterAChangeOfTheConfiguration) {
    open();
    EXPECT_EQ(add(leftKey, 11).status, noErr);
    desktop.peer.setBinds({});
    desktop.peer.send("configreloaded>>");
    EXPECT_TRUE(desktop.runUntil([&] { return held() == 1; }));
    EXPECT_FALSE(losses.take());
}

TEST_P(HyprlandHotKeys, ARefusedKeyThatBecomesFreeIsReported) {
    desktop.peer.setBinds({userBind()});
    open();
    EXPECT_EQ(add(leftKey, 11).status, eventHotKeyExistsErr);
    desktop.peer.setBinds({});
    desktop.peer.send("configreloaded>>");
    ASSERT_TRUE(desktop.runUntil([&] { return losses.take(); }));
    EXPECT_EQ(add(leftKey, 11).status, noErr);
    EXPECT_EQ(keys->loanObstacle(leftKey, controlOption), std::nullopt);
}

TEST_P(HyprlandHotKeys, ACompositorThatDoesNotAnswerHasRefusedNothing) {
    open();
    desktop.peer.behave(FakeHyprland::Manners::silent);
    EXPECT_EQ(add(leftKey, 11).status, eventHotKeyExistsErr);
    EXPECT_TRUE(losses.take());
    EXPECT_EQ(keys->loanObstacle(leftKey, controlOption), std::nullopt);
}

TEST_P(HyprlandHotKeys, AKeyThatNoKeyboardHasIsInvalid) {
    open();
    EXPECT_EQ(add(999, 11).status, eventHotKeyInvalidErr);
    EXPECT_EQ(add(leftKey, 11).status, noErr);
    EXPECT_EQ(add(leftKey, 12).status, eventHotKeyExistsErr);
}

INSTANTIATE_TEST_SUITE_P(InEachWay, HyprlandHotKeys,
                         testing::Values(Way{.name = "vicinae", .offer = Offer::vicinae},
                                         Way{.name = "xx", .offer = Offer::xx}, Way{.name = "lua"},
                                         Way{.name = "hyprlang", .configuration = Configuration::hyprlang}),
                         [](const auto& each) { return each.param.name; });

using HyprlandProtocolHotKeys = HyprlandHotKeys;

TEST_P(HyprlandProtocolHotKeys, ADenialNamesTheHolder) {
    wayland.deny(0xff51, "reserved by a compositor keybind (exec)");
    open();
    EXPECT_EQ(add(leftKey, 11).status, eventHotKeyExistsErr);
    EXPECT_EQ(keys->holderOf({.keyCode = leftKey, .modifiers = controlOption}),
              (ShortcutHolder{.heldBy = "Hyprland", .purpose = "reserved by a compositor keybind (exec)"}));
}

TEST_P(HyprlandProtocolHotKeys, AKeyOfAnotherProgramIsItsOwn) {
    wayland.deny(0xff51, "already bound by another hotkey");
    desktop.peer.setGlobalShortcuts(
        R"([{"name":"portal:one","description":""},{"name":"b","description":"Goes left","app_id":"org.example.Rival",)"
        R"("trigger":"CTRL+ALT+Left"}])");
    open();
    EXPECT_EQ(add(leftKey, 11).status, eventHotKeyExistsErr);
    EXPECT_EQ(keys->holderOf({.keyCode = leftKey, .modifiers = controlOption}),
              (ShortcutHolder{.heldBy = "org.example.Rival", .purpose = "Goes left"}));
}

TEST_P(HyprlandProtocolHotKeys, AKeyThatIsTakenBackIsLostAndMayBeHeldAgain) {
    open();
    const auto left = add(leftKey, 11);
    wayland.revoke(0xff51);
    ASSERT_TRUE(desktop.runUntil([&] { return losses.take(); }));
    keys->unregisterHotKey(*left.reference);
    EXPECT_EQ(add(leftKey, 11).status, noErr);
    EXPECT_EQ(held(), 1U);
}

TEST_P(HyprlandProtocolHotKeys, AreHeldAgainAfterTheEndOfTheConnection) {
    open();
    const auto left = add(leftKey, 11);
    wayland.disconnect();
    ASSERT_TRUE(desktop.runUntil([&] { return losses.take(); }));
    keys->unregisterHotKey(*left.reference);
    EXPECT_EQ(add(leftKey, 11).status, noErr);
    EXPECT_EQ(wayland.keys().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(InEachWay, HyprlandProtocolHotKeys,
                         testing::Values(Way{.name = "vicinae", .offer = Offer::vicinae},
                                         Way{.name = "xx", .offer = Offer::xx}),
                         [](const auto& each) { return each.param.name; });

} // namespace
} // namespace platform::hyprland
