// Presses two shortcuts in turn and reports for each press the time until the active window's frame reached its place.
//
// The clock runs from the moment before the key press is sent to the server (XTEST) to the arrival of the frame's last
// ConfigureNotify with the wanted geometry. There is one connection, no polling, and no other process in between.

#include "Benchmarks/Probes/Display.h"

#include <xcb/xtest.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <ranges>
#include <string_view>
#include <vector>

namespace {

using benchmarks::Clock;
using benchmarks::Display;
using benchmarks::fail;
using benchmarks::Placement;

// A press without an effect by then counts as lost, not as slow.
constexpr std::chrono::seconds patience{2};
// The frame has come to rest when it has not been configured for this long; clients repaint meanwhile.
constexpr std::chrono::milliseconds calm{40};
// Each press comes at another moment of a client's repaint cycle (60 Hz): each is further by a step that shares no
// factor with the cycle.
constexpr std::chrono::microseconds repaintCycle{16'667};
constexpr std::chrono::microseconds phaseStep{6'199};

struct Shortcut {
    std::uint8_t keyCode = 0;
    Placement wanted;
};

struct Order {
    xcb_window_t client = XCB_WINDOW_NONE;
    std::vector<std::uint8_t> modifierKeys;
    std::array<Shortcut, 2> shortcuts;
    int warmUps = 0;
    int presses = 0;
};

/// Removes a number from the front of a text, and the separator behind it if there is one.
int takeNumber(std::string_view& text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) {
        fail("a number is missing");
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (!text.empty()) {
        text.remove_prefix(1);
    }
    return number;
}

Shortcut readShortcut(std::string_view text) {
    Shortcut shortcut;
    shortcut.keyCode = static_cast<std::uint8_t>(takeNumber(text));
    for (int* part : {&shortcut.wanted.x, &shortcut.wanted.y, &shortcut.wanted.width, &shortcut.wanted.height}) {
        *part = takeNumber(text);
    }
    return shortcut;
}

Order readOrder(const std::vector<std::string_view>& words) {
    constexpr std::size_t wordCount = 7;
    if (words.size() != wordCount) {
        fail("usage: PressLatency WINDOW MODIFIER-KEYCODE,... KEYCODE,X,Y,WIDTH,HEIGHT KEYCODE,X,Y,WIDTH,HEIGHT "
             "WARM-UPS PRESSES");
    }
    const auto number = [&words](std::size_t index) {
        std::string_view word = words[index];
        return takeNumber(word);
    };
    Order order{.client = static_cast<xcb_window_t>(number(1)),
                .modifierKeys = {},
                .shortcuts = {readShortcut(words[3]), readShortcut(words[4])},
                .warmUps = number(5),
                .presses = number(6)};
    for (std::string_view keys = words[2]; !keys.empty();) {
        order.modifierKeys.push_back(static_cast<std::uint8_t>(takeNumber(keys)));
    }
    return order;
}

class Presser {
public:
    Presser(const Display& display, const Order& order)
        : display(display)
        , order(order)
        , frame(display.frameOf(order.client)) {
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(display.raw(), frame, XCB_CW_EVENT_MASK, &events);
        display.synchronize();
    }

    void run() {
        std::size_t next = display.placementOf(frame) == order.shortcuts[0].wanted ? 1 : 0;
        for (int press = 0; press < order.warmUps + order.presses; ++press) {
            const std::chrono::duration<double, std::micro> taken = timePress(order.shortcuts[next]);
            if (press >= order.warmUps) {
                std::printf("%.1f\n", taken.count());
            }
            next = 1 - next;
        }
    }

private:
    Clock::duration timePress(const Shortcut& shortcut) {
        for (const std::uint8_t key : order.modifierKeys) {
            sendKey(XCB_KEY_PRESS, key);
        }
        display.synchronize();
        sendKey(XCB_KEY_PRESS, shortcut.keyCode);
        const Clock::time_point start = Clock::now();
        display.flush();
        std::optional<Clock::time_point> arrival = arrivalAt(shortcut.wanted, start + patience);
        sendKey(XCB_KEY_RELEASE, shortcut.keyCode);
        for (const std::uint8_t key : order.modifierKeys | std::views::reverse) {
            sendKey(XCB_KEY_RELEASE, key);
        }
        display.flush();
        // If one press causes several requests, the window may leave the place again: the last arrival counts.
        while (arrival && leaves(shortcut.wanted)) {
            arrival = arrivalAt(shortcut.wanted, start + patience);
        }
        if (!arrival) {
            fail("a press did not bring the window to its place");
        }
        return *arrival - start;
    }

    void sendKey(std::uint8_t kind, std::uint8_t keyCode) const {
        xcb_test_fake_input(display.raw(), kind, keyCode, XCB_CURRENT_TIME, display.root(), 0, 0, 0);
    }

    /// The time when the frame was next configured to that place; empty if it was not until the limit.
    [[nodiscard]] std::optional<Clock::time_point> arrivalAt(const Placement& wanted, Clock::time_point limit) const {
        while (const auto event = display.eventUntil(limit)) {
            if (const auto* configured = asConfigure(*event); configured != nullptr && isAt(*configured, wanted)) {
                return Clock::now();
            }
        }
        return std::nullopt;
    }

    /// Waits until the frame has come to rest, or is configured to another place.
    [[nodiscard]] bool leaves(const Placement& wanted) {
        phase = (phase + phaseStep) % repaintCycle;
        const auto rest = calm + phase;
        while (const auto event = display.eventUntil(Clock::now() + rest)) {
            if (const auto* configured = asConfigure(*event); configured != nullptr && !isAt(*configured, wanted)) {
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] const xcb_configure_notify_event_t* asConfigure(const xcb_generic_event_t& event) const {
        if (event.response_type != XCB_CONFIGURE_NOTIFY) {
            return nullptr;
        }
        const auto* configured = reinterpret_cast<const xcb_configure_notify_event_t*>(&event);
        return configured->window == frame ? configured : nullptr;
    }

    [[nodiscard]] static bool isAt(const xcb_configure_notify_event_t& event, const Placement& wanted) {
        return Placement{.x = event.x, .y = event.y, .width = event.width, .height = event.height} == wanted;
    }

    const Display& display;
    const Order& order;
    xcb_window_t frame;
    std::chrono::microseconds phase{};
};

} // namespace

int main(int argumentCount, char** arguments) {
    const Order order = readOrder({arguments, arguments + argumentCount});
    const Display display;
    Presser(display, order).run();
}
