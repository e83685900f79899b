#include "Platform/Linux/Bus/BusNames.h"

#include "Platform/Linux/Bus/BusHandles.h"

#include <cerrno>
#include <chrono>
#include <cstdint>

namespace platform::linux {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds patience{500};

int take(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    int hasOwner = 0; // the library's boolean
    *static_cast<std::optional<bool>*>(data) = sd_bus_message_is_method_error(reply, nullptr) == 0 &&
                                               sd_bus_message_read(reply, "b", &hasOwner) > 0 && hasOwner != 0;
    return 0;
}

} // namespace

bool hasOwnerOnBus(const std::optional<std::string>& address, const std::string& name) {
    const Clock::time_point deadline = Clock::now() + patience;
    std::optional<bool> answer;
    sd_bus* rawBus = nullptr;
    if (!address || sd_bus_new(&rawBus) < 0) {
        return false;
    }
    const OwnedBus bus(rawBus);
    if (sd_bus_set_address(rawBus, address->c_str()) < 0 || sd_bus_set_bus_client(rawBus, 1) < 0 ||
        sd_bus_start(rawBus) < 0 ||
        sd_bus_call_method_async(rawBus, nullptr, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                 "org.freedesktop.DBus", "NameHasOwner", &take, &answer, "s", name.c_str()) < 0) {
        return false;
    }
    // The library's own calls wait a minute and a half for a bus that sends no greeting, with any timeout.
    while (!answer) {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now());
        const int progress = left.count() > 0 ? sd_bus_process(rawBus, nullptr) : -ETIMEDOUT;
        const int woken = progress == 0 ? sd_bus_wait(rawBus, static_cast<std::uint64_t>(left.count())) : progress;
        if (woken < 0 && woken != -EINTR) {
            return false;
        }
    }
    return *answer;
}

} // namespace platform::linux
