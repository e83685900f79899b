// Launches a program again and again and reports for each launch the time from its window's MapNotify until the
// window's frame reached its final place.
//
// The launches before the first that counts show the final place: where the frame comes to rest. The clock runs from
// the arrival of the client's MapNotify to the arrival of the frame's last ConfigureNotify with that place.

#include "Benchmarks/Probes/Display.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace {

using benchmarks::Clock;
using benchmarks::Display;
using benchmarks::fail;
using benchmarks::Owned;
using benchmarks::Placement;

constexpr std::chrono::seconds patience{10};
// A frame has come to rest when it has not been configured for this long.
constexpr std::chrono::milliseconds calm{150};
constexpr int warmUps = 3;

/// The cause of a failure. Thrown, so that the launched program ends with its launch.
struct Failure {
    std::string sentence;
};

class Launch {
public:
    Launch(const Display& display, std::string_view className, char** command)
        : display(display)
        , className(className) {
        if (posix_spawn(&process, command[0], nullptr, nullptr, command, environ) != 0) {
            throw Failure{"the program does not start"};
        }
    }
    Launch(const Launch&) = delete;
    Launch& operator=(const Launch&) = delete;

    ~Launch() {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        awaitDestruction();
    }

    /// Waits until the client is mapped, and follows its frame from then on.
    void awaitMapping() {
        const auto limit = Clock::now() + patience;
        while (client == XCB_WINDOW_NONE) {
            const auto event = display.eventUntil(limit);
            if (!event) {
                throw Failure{"the program shows no window"};
            }
            const auto kind = event->response_type & ~0x80;
            if (kind == XCB_CREATE_NOTIFY) {
                follow(reinterpret_cast<const xcb_create_notify_event_t*>(event.get())->window);
            } else if (kind == XCB_MAP_NOTIFY) {
                const auto* mapped = reinterpret_cast<const xcb_map_notify_event_t*>(event.get());
                if (mapped->event == mapped->window && isClient(mapped->window)) {
                    mappedAt = Clock::now();
                    client = mapped->window;
                }
            }
        }
        frame = display.frameOf(client);
        follow(frame);
        display.synchronize();
        place = display.placementOf(frame);
        placedAt = Clock::now();
    }

    /// Waits until the frame has come to rest.
    void awaitRest() {
        while (const auto event = display.eventUntil(Clock::now() + calm)) {
            if ((event->response_type & ~0x80) != XCB_CONFIGURE_NOTIFY) {
                continue;
            }
            const auto* configured = reinterpret_cast<const xcb_configure_notify_event_t*>(event.get());
            if (configured->event == frame && configured->window == frame) {
                const Placement next{
                    .x = configured->x, .y = configured->y, .width = configured->width, .height = configured->height};
                if (next != place) {
                    place = next;
                    placedAt = Clock::now();
                }
            }
        }
    }

    [[nodiscard]] Clock::duration taken() const { return placedAt - mappedAt; }

    Placement place;

private:
    void follow(xcb_window_t window) const {
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(display.raw(), window, XCB_CW_EVENT_MASK, &events);
        display.flush();
    }

    [[nodiscard]] bool isClient(xcb_window_t window) const {
        const Owned<xcb_get_property_reply_t> property(xcb_get_property_reply(
            display.raw(), xcb_get_property(display.raw(), 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64),
            nullptr));
        if (!property) {
            return false;
        }
        const std::string_view text(static_cast<const char*>(xcb_get_property_value(property.get())),
                                    static_cast<std::size_t>(xcb_get_property_value_length(property.get())));
        return text.find(className) != std::string_view::npos;
    }

    void awaitDestruction() const {
        const auto limit = Clock::now() + patience;
        while (client != XCB_WINDOW_NONE) {
            const auto event = display.eventUntil(limit);
            if (!event) {
                fail("the window does not go with its program");
            }
            if ((event->response_type & ~0x80) == XCB_DESTROY_NOTIFY &&
                reinterpret_cast<const xcb_destroy_notify_event_t*>(event.get())->window == client) {
                return;
            }
        }
    }

    const Display& display;
    std::string_view className;
    pid_t process = 0;
    xcb_window_t client = XCB_WINDOW_NONE;
    xcb_window_t frame = XCB_WINDOW_NONE;
    Clock::time_point mappedAt;
    Clock::time_point placedAt;
};

std::string text(const Placement& place) {
    return std::to_string(place.width) + "x" + std::to_string(place.height) + "+" + std::to_string(place.x) + "+" +
           std::to_string(place.y);
}

void measure(const Display& display, std::string_view className, int launches, char** command) {
    std::optional<Placement> last;
    for (int number = 0; number < warmUps + launches; ++number) {
        Launch launch(display, className, command);
        launch.awaitMapping();
        launch.awaitRest();
        if (number < warmUps) {
            last = launch.place;
            continue;
        }
        if (launch.place != last) {
            throw Failure{"a launch ended at " + text(launch.place) + ", those before at " + text(*last)};
        }
        const std::chrono::duration<double, std::micro> taken = launch.taken();
        std::printf("%.1f %d %d %d %d\n", taken.count(), last->x, last->y, last->width, last->height);
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    constexpr int fixedArguments = 3;
    if (argumentCount <= fixedArguments) {
        fail("usage: RuleLatency CLASS LAUNCHES PROGRAM ARGUMENT...");
    }
    const Display display;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display.raw(), display.root(), XCB_CW_EVENT_MASK, &events);
    display.synchronize();
    try {
        measure(display, arguments[1], std::stoi(arguments[2]), arguments + fixedArguments);
    } catch (const Failure& failure) {
        fail(failure.sentence.c_str());
    }
}
