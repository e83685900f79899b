#pragma once

#include "Tests/Platform/Linux/HotKeys/HotKeyLosses.h"
#include "Tests/Platform/Sway/OpenWindowAccess.h"

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

/// Hot keys at a simulated peer, with their reported presses.
class SwayHotKeys : public testing::Test {
protected:
    void open(const std::string& configuration = "") {
        desktop.sway.setConfiguration(configuration);
        keys = std::make_unique<HotKeys>(
            desktop.session, [](const auto&, const auto&) { return std::vector<i3ipc::ConfigurationFile>(); },
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
        desktop.sway.send(bindingEvent, R"({"change":"run","binding":{"command":")" + command +
                                            R"(","event_state_mask":["Control","Mod1"],"input_code":113}})");
    }

    void reload() { desktop.sway.send(workspaceEvent, R"({"change":"reload","current":null})"); }

    OpenWindowAccess desktop;
    /// The commands for the time after the program, in order.
    std::vector<std::string> left;
    std::unique_ptr<HotKeys> keys;
    std::unique_ptr<linux::HotKeyLosses> losses;
    std::vector<std::uint32_t> pressed;
};

} // namespace platform::sway
