#include "Tests/Platform/Linux/HotKeys/HotKeyLosses.h"
#include "Tests/Platform/Wayfire/OpenWindowAccess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform::wayfire {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::uint32_t controlOption = 0x1000 | 0x800;
constexpr std::uint32_t leftKey = 123;
constexpr std::uint32_t cKey = 8;

constexpr const char* switching = R"(<wayfire><plugin name="vswitch"><_short>Viewport Switcher</_short>
    <option name="binding_left" type="activator"><_short>Left</_short></option></plugin></wayfire>)";
constexpr const char* commands = R"(<wayfire><plugin name="command"><option name="bindings" type="dynamic-list">
    <entry prefix="command_" type="string"/><entry prefix="binding_" type="activator"/></option></plugin></wayfire>)";
constexpr const char* core = R"(<wayfire><plugin name="core"><_short>Core</_short>
    <option name="close_top_view" type="activator"><_short>Close</_short></option></plugin></wayfire>)";

class WayfireHotKeys : public testing::Test {
protected:
    void open() {
        desktop.wayfire.setOption("core/plugins", "ipc ipc-rules command vswitch");
        keys = std::make_unique<HotKeys>(desktop.session, [](const std::string& folder) {
            return folder == "/metadata" ? std::vector<std::string>{switching, commands, core}
                                         : std::vector<std::string>();
        });
        losses = std::make_unique<linux::HotKeyLosses>(*keys);
        keys->installHandler(
            [](EventHandlerCall*, const HotKeyEvent* event, void* data) {
                static_cast<std::vector<std::uint32_t>*>(data)->push_back(event->directObject()->id);
                return noErr;
            },
            &pressed);
        desktop.session.start();
        ASSERT_TRUE(desktop.session.isOpen());
    }

    HotKeyEvents::Registration add(std::uint32_t keyCode, std::uint32_t id) {
        return keys->registerHotKey(keyCode, controlOption, {.signature = 1, .id = id});
    }

    /// The peer's number of a binding.
    [[nodiscard]] std::uint64_t numberOfKeys(const std::string& text) {
        for (const auto& [number, bound] : desktop.wayfire.bindings()) {
            if (bound == text) {
                return number;
            }
        }
        ADD_FAILURE() << text << " is not bound";
        return 0;
    }

    OpenWindowAccess desktop;
    std::unique_ptr<HotKeys> keys;
    std::unique_ptr<linux::HotKeyLosses> losses;
    std::vector<std::uint32_t> pressed;
};

TEST_F(WayfireHotKeys, AreBoundByThePlacesOfKeysAndTakenBack) {
    open();
    const auto registration = add(leftKey, 1);
    EXPECT_EQ(registration.status, noErr);
    ASSERT_TRUE(registration.reference.has_value());
    EXPECT_THAT(desktop.wayfire.bindings(), ElementsAre(Pair(testing::_, "<ctrl> <alt> KEY_LEFT")));
    keys->unregisterHotKey(*registration.reference);
    keys->unregisterHotKey(*registration.reference);
    EXPECT_THAT(desktop.wayfire.bindings(), IsEmpty());
    EXPECT_EQ(desktop.wayfire.takeChanges().size(), 2U);
}

TEST_F(WayfireHotKeys, AreTakenBackAtTheEnd) {
    open();
    add(leftKey, 1);
    add(cKey, 2);
    keys.reset();
    EXPECT_THAT(desktop.wayfire.bindings(), IsEmpty());
}

TEST_F(WayfireHotKeys, ArePressedOnceForEachEventOfTheirs) {
    open();
    add(leftKey, 1);
    add(cKey, 2);
    for (const std::uint64_t number : {numberOfKeys("<ctrl> <alt> KEY_C"), numberOfKeys("<ctrl> <alt> KEY_LEFT"),
                                       std::uint64_t{4711}, numberOfKeys("<ctrl> <alt> KEY_C")}) {
        desktop.wayfire.press(number);
    }
    ASSERT_TRUE(desktop.runUntil([&] { return pressed.size() == 3; }));
    EXPECT_THAT(pressed, ElementsAre(2U, 1U, 2U));
}

TEST_F(WayfireHotKeys, MalformedEventsPressNothing) {
    open();
    add(leftKey, 1);
    for (const char* text : {R"({"event":"command-binding"})", R"({"event":"command-binding","binding-id":"1"})",
                             R"({"event":"command-binding","binding-id":-1})", R"({"event":["command-binding"]})",
                             R"({"event":"command-binding","binding-id":1.5})"}) {
        desktop.wayfire.sendRaw(FakeWayfire::message(text));
    }
    desktop.wayfire.press(numberOfKeys("<ctrl> <alt> KEY_LEFT"));
    ASSERT_TRUE(desktop.runUntil([&] { return !pressed.empty(); }));
    EXPECT_THAT(pressed, ElementsAre(1U));
}

TEST_F(WayfireHotKeys, AKeyThatAnOptionBindsIsRefusedAndItsHolderKnown) {
    struct Row {
        const char* option;
        Json value;
        const char* heldBy;
        std::variant<KeyPurpose, std::string> purpose;
    };

    const std::vector<Row> rows{
        {"vswitch/binding_left", "<super> KEY_X | <alt> <ctrl> KEY_LEFT", "Wayfire, wayfire.ini [vswitch] binding_left",
         KeyPurpose::workspaceOnTheLeft},
        {"command/bindings",
         {{"other", "foot", "<super> KEY_LEFT"}, {"mine", "exec KEY_Q", "<ctrl><alt>KEY_LEFT"}},
         "Wayfire, wayfire.ini [command] binding_mine",
         "exec KEY_Q"},
        {"core/close_top_view", "<ctrl> <alt> KEY_LEFT", "Wayfire, wayfire.ini [core] close_top_view",
         std::string("Core: Close")},
    };
    open();
    for (const Row& row : rows) {
        desktop.wayfire.setOption(row.option, row.value);
        keys->configurationChanged();
        EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr) << row.option;
        EXPECT_EQ(keys->loanObstacle(leftKey, controlOption), LoanObstacle::notReleased);
        const std::optional<ShortcutHolder> holder = keys->holderOf({.keyCode = leftKey, .modifiers = controlOption});
        ASSERT_TRUE(holder.has_value()) << row.option;
        EXPECT_EQ(holder->heldBy, row.heldBy);
        EXPECT_EQ(holder->purpose, row.purpose);
        desktop.wayfire.setOption(row.option, "none");
    }
    EXPECT_THAT(desktop.wayfire.bindings(), IsEmpty());
    EXPECT_EQ(keys->holderOf({.keyCode = cKey, .modifiers = controlOption}), std::nullopt);
    EXPECT_EQ(keys->loanObstacle(cKey, controlOption), std::nullopt);
}

TEST_F(WayfireHotKeys, AnOptionOfAPluginThatIsNotInUseBindsNothing) {
    desktop.wayfire.setOption("vswitch/binding_left", "<alt> <ctrl> KEY_LEFT");
    open();
    desktop.wayfire.setOption("core/plugins", "ipc ipc-rules command vswitch-more");
    EXPECT_EQ(add(leftKey, 1).status, noErr);
}

TEST_F(WayfireHotKeys, OneThatTheUserBindsOrFreesIsReportedOnce) {
    open();
    const auto registration = add(leftKey, 1);
    EXPECT_EQ(registration.status, noErr);
    keys->configurationChanged();
    EXPECT_FALSE(losses->take());
    desktop.wayfire.setOption("vswitch/binding_left", "<alt> <ctrl> KEY_LEFT");
    keys->configurationChanged();
    EXPECT_TRUE(losses->take());
    keys->unregisterHotKey(*registration.reference);
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    keys->configurationChanged();
    EXPECT_FALSE(losses->take());
    desktop.wayfire.setOption("vswitch/binding_left", "<super> KEY_LEFT");
    keys->configurationChanged();
    EXPECT_TRUE(losses->take());
    EXPECT_EQ(add(leftKey, 1).status, noErr);
}

TEST_F(WayfireHotKeys, TheSameCombinationIsNotBoundTwice) {
    open();
    EXPECT_EQ(add(leftKey, 1).status, noErr);
    EXPECT_EQ(add(leftKey, 2).status, eventHotKeyExistsErr);
}

TEST_F(WayfireHotKeys, AKeyThatNoKeyboardHasIsInvalid) {
    open();
    EXPECT_EQ(add(200, 1).status, eventHotKeyInvalidErr);
}

TEST_F(WayfireHotKeys, AreBoundAnewByACompositorThatStartsAnew) {
    open();
    add(leftKey, 1);
    desktop.wayfire.stop();
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.session.isOpen(); }));
    desktop.wayfire.start();
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.session.isOpen(); }));
    desktop.wayfire.press(numberOfKeys("<ctrl> <alt> KEY_LEFT"));
    ASSERT_TRUE(desktop.runUntil([&] { return !pressed.empty(); }));
    EXPECT_FALSE(losses->take());
}

TEST_F(WayfireHotKeys, WithoutAnAnswerNothingIsTakenForFree) {
    open();
    desktop.wayfire.behave(FakeWayfire::Manners::silent);
    EXPECT_EQ(add(leftKey, 1).status, eventHotKeyExistsErr);
    // It is to be tried again.
    EXPECT_TRUE(losses->take());
}

TEST_F(WayfireHotKeys, ABindingWhoseNumberIsUnknownEndsWithTheConnection) {
    open();
    add(cKey, 1);
    desktop.wayfire.behave(FakeWayfire::Manners::silent);
    EXPECT_EQ(add(leftKey, 2).status, noErr);
    ASSERT_TRUE(desktop.runUntil([&] { return !desktop.session.isOpen(); }));
    desktop.wayfire.behave(FakeWayfire::Manners::good);
    ASSERT_TRUE(desktop.runUntil([&] { return desktop.session.isOpen(); }));
    EXPECT_EQ(desktop.wayfire.bindings().size(), 2U);
}

} // namespace
} // namespace platform::wayfire
