#include "Platform/Simulated/Desktop.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace platform::simulated {
namespace {

using Lines = std::vector<std::string>;

constexpr EventHotKeyID firstName{.signature = 0x41424344, .id = 1};
constexpr EventHotKeyID secondName{.signature = 0x41424344, .id = 2};

/// Records its arguments; returns the id.
OSStatus note(EventHandlerCall* /*nextHandler*/, const HotKeyEvent* event, void* userData) {
    auto& heard = *static_cast<Lines*>(userData);
    if (event == nullptr) {
        heard.emplace_back("no event");
        return -1;
    }
    const auto name = event->directObject();
    if (!name) {
        heard.push_back("error " + std::to_string(name.error()));
        return -2;
    }
    heard.push_back("id " + std::to_string(name->id));
    return static_cast<OSStatus>(name->id);
}

class SimulatedHotKeys : public testing::Test {
protected:
    Desktop desktop;
    HotKeyEvents& events = desktop.hotKeyEvents;
    Lines heard;
};

TEST_F(SimulatedHotKeys, APressReachesTheHandlerUnderTheNameOfItsKey) {
    EXPECT_EQ(events.installHandler(note, &heard), noErr);
    const auto first = events.registerHotKey(123, 6144, firstName);
    const auto second = events.registerHotKey(124, 6144, secondName);
    EXPECT_EQ(first.status, noErr);
    ASSERT_TRUE(first.reference && second.reference);
    EXPECT_NE(first.reference, second.reference);
    EXPECT_EQ(events.press(124, 6144), 2);
    EXPECT_EQ(heard, (Lines{"id 2"}));
    events.unregisterHotKey(*second.reference);
    EXPECT_EQ(events.press(124, 6144), std::nullopt);
    EXPECT_EQ(events.press(123, 4096), std::nullopt);
    EXPECT_EQ(events.registered(), (std::vector<HotKeyEvents::Registered>{{*first.reference, 123, 6144, firstName}}));
}

TEST_F(SimulatedHotKeys, NothingHappensWithoutAHandler) {
    events.installStatus = -50;
    EXPECT_EQ(events.installHandler(note, &heard), -50);
    EXPECT_TRUE(events.registerHotKey(123, 6144, firstName).reference);
    EXPECT_EQ(events.press(123, 6144), std::nullopt);
    EXPECT_EQ(events.deliverWithoutEvent(), std::nullopt);
}

TEST_F(SimulatedHotKeys, AKeyIsRefusedWhenItIsTaken) {
    events.refuse(123, 6144);
    const auto refused = events.registerHotKey(123, 6144, firstName);
    EXPECT_EQ(refused.status, eventHotKeyExistsErr);
    EXPECT_FALSE(refused.reference);
    events.release(123, 6144);
    EXPECT_TRUE(events.registerHotKey(123, 6144, firstName).reference);
    EXPECT_EQ(events.registerHotKey(123, 6144, secondName).status, eventHotKeyExistsErr);
}

TEST_F(SimulatedHotKeys, AKeyCanBeAcceptedWithoutAReference) {
    events.refuse(123, 6144, noErr);
    const auto registration = events.registerHotKey(123, 6144, firstName);
    EXPECT_EQ(registration.status, noErr);
    EXPECT_FALSE(registration.reference);
    EXPECT_TRUE(events.registered().empty());
}

TEST_F(SimulatedHotKeys, OddEventsReachTheHandler) {
    events.installHandler(note, &heard);
    EXPECT_EQ(events.deliverWithoutEvent(), -1);
    EXPECT_EQ(events.deliverWithoutParameter(), -2);
    EXPECT_EQ(events.deliver({.signature = 1, .id = 9}), 9);
    EXPECT_EQ(heard, (Lines{"no event", "error -9870", "id 9"}));
}

TEST_F(SimulatedHotKeys, AreRecorded) {
    events.installHandler(note, &heard);
    const auto registration = events.registerHotKey(123, 6144, firstName);
    events.unregisterHotKey(*registration.reference);
    events.unregisterHotKey(*registration.reference);
    EXPECT_EQ(desktop.trace.take(), (Lines{"install hot key handler", "register hot key 123 6144 as ABCD 1",
                                           "unregister hot key ABCD 1", "unregister hot key unknown"}));
}

} // namespace
} // namespace platform::simulated
