#include "CorvidKitCore/Keys.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/X11/HotKeys.h"
#include "Tests/Platform/Linux/HotKeys/HotKeyLosses.h"
#include "XServer.h"

#include <gtest/gtest.h>
#include <xcb/xinput.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace platform::x11 {
namespace {

constexpr std::uint32_t borrowedKey = 123;
constexpr std::uint32_t freeKey = 8;
constexpr std::uint32_t heldModifiers = 0x1000 | 0x800;

/// Hot keys on a server whose window manager holds one of them by a core grab. The tests construct events in the
/// server's format.
class X11HotKeys : public testing::Test {
protected:
    X11HotKeys() {
        connection.deadline().begin();
        EXPECT_TRUE(prepareKeyboard(connection));
        map = readKeyboardMap(connection).value();
        keys.installHandler(
            [](EventHandlerCall*, const HotKeyEvent* event, void* reported) {
                static_cast<std::vector<std::uint32_t>*>(reported)->push_back(event->directObject()->id);
                return noErr;
            },
            &pressed);
        manager.deadline().begin();
        EXPECT_EQ(KeyGrabs(manager).take(combinationOf(borrowedKey), map->lockModifiers, false).kind,
                  KeyGrabs::Kind::core);
    }

    [[nodiscard]] KeyCombination combinationOf(std::uint32_t key) const {
        return {.keyCode = map->keyCode(corvid::keyOf(key)->xkbName).value(),
                .modifiers = coreModifiers(*map, heldModifiers)};
    }

    HotKeyEvents::Registration add(std::uint32_t key, std::uint32_t id) {
        connection.deadline().begin();
        return keys.registerHotKey(key, heldModifiers, {.signature = 0, .id = id});
    }

    [[nodiscard]] HotKeyLoan loan(std::uint32_t key) const { return keys.loan(key, heldModifiers); }

    [[nodiscard]] std::uint8_t inputExtension() {
        return xcb_get_extension_data(connection.raw(), &xcb_input_id)->major_opcode;
    }

    /// An event of the X Input extension.
    void testClient(std::uint16_t type, const KeyCombination& key,
                    std::optional<std::uint8_t> extension = std::nullopt) {
        xcb_input_key_press_event_t event{};
        event.response_type = XCB_GE_GENERIC;
        event.extension = extension.value_or(inputExtension());
        event.event_type = type;
        event.detail = key.keyCode;
        event.mods.effective = key.modifiers;
        keys.handle(reinterpret_cast<const xcb_generic_event_t&>(event));
    }

    void handCore(std::uint8_t type, const KeyCombination& key) {
        xcb_key_press_event_t event{};
        event.response_type = type;
        event.detail = key.keyCode;
        event.state = key.modifiers;
        keys.handle(reinterpret_cast<const xcb_generic_event_t&>(event));
    }

    [[nodiscard]] std::vector<std::uint32_t> takePressed() { return std::exchange(pressed, {}); }

    XServer server;
    linux::MainLoop clock;
    Connection connection{Connection::open(server.display(), clock.turnDeadline()).value()};
    Connection manager{Connection::open(server.display(), clock.turnDeadline()).value()};
    HotKeys keys{connection};
    linux::HotKeyLosses losses{keys};
    std::optional<KeyboardMap> map;
    std::vector<std::uint32_t> pressed;
};

using Ids = std::vector<std::uint32_t>;

TEST_F(X11HotKeys, AKeyThatTheWindowManagerHoldsIsLentAndTakenWithConsentOnly) {
    EXPECT_EQ(loan(borrowedKey), HotKeyLoan::none) << "nobody has asked for it yet";
    EXPECT_EQ(add(borrowedKey, 1).status, eventHotKeyExistsErr);
    EXPECT_EQ(add(freeKey, 2).status, noErr);
    EXPECT_EQ(loan(borrowedKey), HotKeyLoan::possible);
    EXPECT_EQ(loan(freeKey), HotKeyLoan::none);
    EXPECT_FALSE(keys.renewBorrowed());

    keys.setBorrows(true);
    const auto registration = add(borrowedKey, 1);
    ASSERT_EQ(registration.status, noErr);
    EXPECT_EQ(loan(borrowedKey), HotKeyLoan::made);
    EXPECT_TRUE(keys.renewBorrowed());
    EXPECT_EQ(add(borrowedKey, 3).status, eventHotKeyExistsErr) << "it is ours";

    keys.unregisterHotKey(*registration.reference);
    EXPECT_EQ(loan(borrowedKey), HotKeyLoan::none);
    keys.setBorrows(false);
    EXPECT_EQ(add(borrowedKey, 1).status, eventHotKeyExistsErr);
    EXPECT_EQ(loan(borrowedKey), HotKeyLoan::possible);
}

TEST_F(X11HotKeys, AKeyThatIsHeldBothWaysIsNotLentAndSaysSo) {
    const auto obstacle = [this] { return keys.loanObstacle(borrowedKey, heldModifiers); };
    EXPECT_EQ(add(borrowedKey, 1).status, eventHotKeyExistsErr);
    EXPECT_EQ(obstacle(), std::nullopt) << "one way is left";
    KeyGrabs others(manager);
    manager.deadline().begin();
    ASSERT_TRUE(others.renew(combinationOf(borrowedKey), map->lockModifiers, KeyGrabs::Kind::extension));
    for (const bool consent : {false, true}) {
        keys.setBorrows(consent);
        EXPECT_EQ(add(borrowedKey, 1).status, eventHotKeyExistsErr);
        EXPECT_EQ(loan(borrowedKey), HotKeyLoan::none);
        EXPECT_EQ(obstacle(), LoanObstacle::heldBothWays);
    }
    others.release(combinationOf(borrowedKey), map->lockModifiers, KeyGrabs::Kind::extension);
    static_cast<void>(manager.succeeded({}));
    EXPECT_EQ(add(borrowedKey, 1).status, noErr);
    EXPECT_EQ(loan(borrowedKey), HotKeyLoan::made);
    EXPECT_EQ(obstacle(), std::nullopt);
}

TEST_F(X11HotKeys, APressOfABorrowedKeyCountsOnceUntilItIsReleased) {
    keys.setBorrows(true);
    ASSERT_EQ(add(borrowedKey, 7).status, noErr);
    const KeyCombination key = combinationOf(borrowedKey);
    testClient(XCB_INPUT_KEY_PRESS, key);
    EXPECT_EQ(takePressed(), (Ids{7}));
    testClient(XCB_INPUT_KEY_PRESS, key);
    EXPECT_EQ(takePressed(), Ids{}) << "held down, it repeats";
    testClient(XCB_INPUT_KEY_RELEASE, key);
    testClient(XCB_INPUT_KEY_PRESS, key);
    EXPECT_EQ(takePressed(), (Ids{7}));
}

TEST_F(X11HotKeys, LocksDoNotMatterToABorrowedKeyAndOtherModifiersDo) {
    keys.setBorrows(true);
    ASSERT_EQ(add(borrowedKey, 7).status, noErr);
    KeyCombination key = combinationOf(borrowedKey);
    const auto withModifiers = [&](unsigned modifiers) {
        const KeyCombination each{.keyCode = key.keyCode, .modifiers = static_cast<std::uint16_t>(modifiers)};
        testClient(XCB_INPUT_KEY_PRESS, each);
        testClient(XCB_INPUT_KEY_RELEASE, each);
        return takePressed();
    };
    EXPECT_EQ(withModifiers(unsigned{key.modifiers} | map->lockModifiers), (Ids{7}));
    // The bits above the modifiers are the pointer's buttons.
    EXPECT_EQ(withModifiers(unsigned{key.modifiers} | XCB_BUTTON_MASK_1), (Ids{7}));
    EXPECT_EQ(withModifiers(unsigned{key.modifiers} | XCB_MOD_MASK_SHIFT), Ids{});
    EXPECT_EQ(withModifiers(XCB_MOD_MASK_CONTROL), Ids{});
    EXPECT_EQ(withModifiers(0), Ids{});
}

TEST_F(X11HotKeys, OtherEventsAreNoPress) {
    keys.setBorrows(true);
    ASSERT_EQ(add(borrowedKey, 7).status, noErr);
    const KeyCombination key = combinationOf(borrowedKey);
    testClient(XCB_INPUT_KEY_PRESS, key, static_cast<std::uint8_t>(inputExtension() + 1));
    testClient(XCB_INPUT_KEY_RELEASE, key);
    testClient(XCB_INPUT_RAW_KEY_PRESS, key);
    testClient(XCB_INPUT_BUTTON_PRESS, key);
    testClient(XCB_INPUT_KEY_PRESS, combinationOf(freeKey));
    EXPECT_EQ(takePressed(), Ids{});
}

TEST_F(X11HotKeys, BothKindsOfEventsAreOfOneKeyboard) {
    keys.setBorrows(true);
    ASSERT_EQ(add(borrowedKey, 7).status, noErr);
    ASSERT_EQ(add(freeKey, 8).status, noErr);
    testClient(XCB_INPUT_KEY_PRESS, combinationOf(borrowedKey));
    handCore(XCB_KEY_PRESS, combinationOf(freeKey));
    handCore(XCB_KEY_PRESS, combinationOf(freeKey));
    handCore(XCB_KEY_RELEASE, combinationOf(freeKey));
    testClient(XCB_INPUT_KEY_RELEASE, combinationOf(borrowedKey));
    handCore(XCB_KEY_PRESS, combinationOf(freeKey));
    EXPECT_EQ(takePressed(), (Ids{7, 8, 8}));
}

TEST_F(X11HotKeys, ABorrowedKeyThatAnotherClientGrabsInTheSameWayIsLost) {
    keys.setBorrows(true);
    ASSERT_EQ(add(borrowedKey, 7).status, noErr);
    EXPECT_FALSE(losses.take());
    // As a client would that comes between the end of our grab and the next one.
    KeyGrabs(connection).release(combinationOf(borrowedKey), map->lockModifiers, KeyGrabs::Kind::extension);
    connection.deadline().begin();
    static_cast<void>(connection.succeeded({}));
    manager.deadline().begin();
    ASSERT_TRUE(KeyGrabs(manager).renew(combinationOf(borrowedKey), map->lockModifiers, KeyGrabs::Kind::extension));
    connection.deadline().begin();
    EXPECT_TRUE(keys.renewBorrowed());
    EXPECT_TRUE(losses.take());
    EXPECT_EQ(loan(borrowedKey), HotKeyLoan::none);
    testClient(XCB_INPUT_KEY_PRESS, combinationOf(borrowedKey));
    EXPECT_EQ(takePressed(), Ids{});
}

} // namespace
} // namespace platform::x11
