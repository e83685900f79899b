#pragma once

#include "Tests/Platform/Linux/HotKeyLosses.h"
#include "Tests/Platform/Sway/OpenDoor.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace platform::sway {

inline constexpr std::uint32_t workspaceEvent = 0x80000000;
inline constexpr std::uint32_t bindingEvent = 0x80000005;
inline constexpr std::uint32_t controlOption = 0x1000 | 0x800;
inline constexpr std::uint32_t leftKey = 123;
inline constexpr std::uint32_t cKey = 8;
inline constexpr std::uint32_t signature = 0x43576b79;

/// Hot keys at a peer of the test, with what they tell.
class SwayHotKeys : public testing::Test {
protected:
    void open(const std::string& configuration = "") {
        desktop.sway.setConfiguration(configuration);
        keys = std::make_unique<HotKeys>(
            desktop.session, [](const auto&, const auto&) { return std::vector<ConfigurationFile>(); },
            [this](const std::string& commands) { left.push_back(commands); });
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
        return keys->registerHotKey(keyCode, controlOption, {.signature = signature, .id = id});
    }

    void press(const std::string& command) {
        desktop.sway.tell(bindingEvent, R"({"change":"run","binding":{"command":")" + command +
                                            R"(","event_state_mask":["Control","Mod1"],"input_code":113}})");
    }

    void reload() { desktop.sway.tell(workspaceEvent, R"({"change":"reload","current":null})"); }

    OpenDoor desktop;
    /// The commands for the time after the program, in order.
    std::vector<std::string> left;
    std::unique_ptr<HotKeys> keys;
    std::unique_ptr<linux::HotKeyLosses> losses;
    std::vector<std::uint32_t> pressed;
};

} // namespace platform::sway
