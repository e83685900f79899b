// Starts a program and reports the time until it held a hot key: until the server refuses another client the same grab.
//
// The clock runs from the moment before the creation of the program's process. The probe tries the grab every tenth of
// a millisecond, within a server grab, so that its own grab can never block the program's.

#include "Benchmarks/Probes/Display.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <thread>

namespace {

using benchmarks::Clock;
using benchmarks::Display;
using benchmarks::fail;
using benchmarks::Owned;

constexpr std::chrono::seconds patience{10};
constexpr std::chrono::microseconds pause{100};

struct HotKey {
    std::uint8_t keyCode = 0;
    std::uint16_t modifiers = 0;
};

bool isHeld(const Display& display, const HotKey& key) {
    xcb_connection_t* raw = display.raw();
    xcb_grab_server(raw);
    const auto request = xcb_grab_key_checked(raw, 0, display.root(), key.modifiers, key.keyCode, XCB_GRAB_MODE_ASYNC,
                                              XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_key(raw, key.keyCode, display.root(), key.modifiers);
    xcb_ungrab_server(raw);
    const Owned<xcb_generic_error_t> error(xcb_request_check(raw, request));
    return error != nullptr && error->error_code == XCB_ACCESS;
}

bool waitUntilHeld(const Display& display, const HotKey& key, bool wanted) {
    for (const auto limit = Clock::now() + patience; Clock::now() < limit;) {
        if (isHeld(display, key) == wanted) {
            return true;
        }
        std::this_thread::sleep_for(pause);
    }
    return false;
}

} // namespace

int main(int argumentCount, char** arguments) {
    constexpr int fixedArguments = 3;
    if (argumentCount <= fixedArguments) {
        fail("usage: StartToArmed KEYCODE MODIFIERS PROGRAM ARGUMENT...");
    }
    const HotKey key{.keyCode = static_cast<std::uint8_t>(std::stoi(arguments[1])),
                     .modifiers = static_cast<std::uint16_t>(std::stoi(arguments[2]))};
    const Display display;
    if (!waitUntilHeld(display, key, false)) {
        fail("somebody else holds the key");
    }

    pid_t process = 0;
    const Clock::time_point start = Clock::now();
    if (posix_spawn(&process, arguments[fixedArguments], nullptr, nullptr, arguments + fixedArguments, environ) != 0) {
        fail("the program does not start");
    }
    const bool isArmed = waitUntilHeld(display, key, true);
    const std::chrono::duration<double, std::micro> taken = Clock::now() - start;
    // SIGKILL, because a SIGTERM that arrives before the program handles it may be lost.
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    if (!isArmed) {
        fail("the program did not take the key");
    }
    std::printf("%.1f\n", taken.count());
}
