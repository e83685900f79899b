// A window on Wayland that presses keys and reports the time until it had its new size.
//
// usage: WaylandPressLatency SENDER NAME    (the hands: KeySender.h)
//
// Reads a line at a time from standard input and answers each with one:
//   resize KEY    presses Control, Alt and the key; answers with microseconds, microseconds, width and height: from the
//                 moment before the key's message leaves until the window receives the size that it then keeps, and
//                 until the compositor has painted it in that size; and the size
//   reach KEY     the same with a free key; answers with microseconds until the window has the key
//   press KEY     the same without a measurement; answers with 0
//
// There is one process and one clock: the process that presses owns the window that the compositor configures.

#include "Benchmarks/Probes/Wayland/KeySender.h"
#include "Benchmarks/Probes/Wayland/Window.h"

#include <linux/input-event-codes.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <ranges>
#include <string_view>

namespace {

using benchmarks::Clock;
using benchmarks::fail;
using benchmarks::wayland::Connection;
using benchmarks::wayland::KeySender;
using benchmarks::wayland::Size;
using benchmarks::wayland::Window;

// A press without an effect by then counts as lost, not as slow.
constexpr std::chrono::seconds patience{2};
// The window has come to rest when it has received no event for this long.
constexpr std::chrono::milliseconds calm{40};
// Each press comes at another moment of the compositor's repaint cycle (60 Hz): each is further by a step that shares
// no factor with the cycle.
constexpr std::chrono::microseconds repaintCycle{16'667};
constexpr std::chrono::microseconds phaseStep{6'199};

constexpr std::array<unsigned, 2> modifierKeys{KEY_LEFTCTRL, KEY_LEFTALT};
constexpr std::uint32_t controlAndAlt = 4 + 8;

constexpr Size natural{.width = 500, .height = 400};

class Presser {
public:
    Presser(std::string_view kind, const char* name)
        : window(connection, name, natural)
        , keySender(keySenderOf(kind, connection)) {}

    void serve() {
        std::array<char, 64> line{};
        for (;;) {
            while (!connection.handleEvents(Clock::now() + patience, STDIN_FILENO)) {
            }
            if (std::fgets(line.data(), line.size(), stdin) == nullptr) {
                return;
            }
            carryOut(line.data());
            std::fflush(stdout);
        }
    }

private:
    void carryOut(std::string_view line) {
        const std::size_t space = line.find(' ');
        unsigned key = 0;
        if (space == std::string_view::npos ||
            std::from_chars(line.data() + space + 1, line.data() + line.size(), key).ec != std::errc()) {
            fail("not understood");
        }
        if (line.substr(0, space) == "resize") {
            const Size before = window.size();
            const Clock::time_point start = press(key, [&] { return window.size() != before; });
            until([this] { return window.painted().has_value(); }, "the window's picture is not shown");
            untilCalm();
            std::printf("%.1f %.1f %d %d\n", microseconds(window.configured() - start),
                        microseconds(*window.painted() - start), window.size().width, window.size().height);
        } else if (line.substr(0, space) == "press") {
            press(key, [] { return true; });
            std::puts("0");
        } else {
            const auto before = window.keyArrival();
            const Clock::time_point start = press(key, [&] { return window.keyArrival() != before; });
            std::printf("%.1f\n", microseconds(*window.keyArrival() - start));
        }
    }

    /// The time of the key press; the key and the modifiers have been released on return.
    template <typename Condition>
    Clock::time_point press(unsigned key, const Condition& hasHappened) {
        untilCalm();
        for (const unsigned modifier : modifierKeys) {
            keySender->move(modifier, true);
        }
        until([this] { return (window.modifiers() & controlAndAlt) == controlAndAlt; },
              "the window does not have the keyboard");
        const Clock::time_point start = Clock::now();
        keySender->move(key, true);
        until(hasHappened, "a press had no effect");
        keySender->move(key, false);
        for (const unsigned modifier : modifierKeys | std::views::reverse) {
            keySender->move(modifier, false);
        }
        until([this] { return (window.modifiers() & controlAndAlt) == 0; }, "the window has lost the keyboard");
        return start;
    }

    template <typename Condition>
    void until(const Condition& isTrue, const char* otherwise) const {
        const Clock::time_point limit = Clock::now() + patience;
        while (!isTrue()) {
            if (Clock::now() >= limit) {
                fail(otherwise);
            }
            connection.handleEvents(limit);
        }
    }

    void untilCalm() {
        phase = (phase + phaseStep) % repaintCycle;
        const Clock::time_point begin = Clock::now();
        const auto end = [&] { return std::max(begin, window.lastWord()) + calm + phase; };
        while (Clock::now() < end()) {
            connection.handleEvents(end());
        }
    }

    static double microseconds(Clock::duration duration) {
        return std::chrono::duration<double, std::micro>(duration).count();
    }

    Connection connection;
    Window window;
    std::unique_ptr<KeySender> keySender;
    std::chrono::microseconds phase{};
};

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3) {
        fail("usage: WaylandPressLatency SENDER NAME");
    }
    Presser(arguments[1], arguments[2]).serve();
}
