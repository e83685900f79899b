#include "Platform/Linux/Control/BusNames.h"

#include "Platform/Linux/Control/BusHandles.h"

#include <chrono>
#include <cstdint>

namespace platform::linux {

bool hasOwnerOnBus(const std::optional<std::string>& address, const std::string& name) {
    constexpr std::chrono::microseconds patience = std::chrono::milliseconds(500);
    sd_bus* rawBus = nullptr;
    if (!address || sd_bus_new(&rawBus) < 0) {
        return false;
    }
    const OwnedBus bus(rawBus);
    if (sd_bus_set_address(rawBus, address->c_str()) < 0 || sd_bus_set_bus_client(rawBus, 1) < 0 ||
        sd_bus_set_method_call_timeout(rawBus, static_cast<std::uint64_t>(patience.count())) < 0 ||
        sd_bus_start(rawBus) < 0) {
        return false;
    }
    sd_bus_message* rawReply = nullptr;
    if (sd_bus_call_method(rawBus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "NameHasOwner", nullptr, &rawReply, "s", name.c_str()) < 0) {
        return false;
    }
    const OwnedMessage reply(rawReply);
    int hasOwner = 0; // the library's boolean
    return sd_bus_message_read(rawReply, "b", &hasOwner) > 0 && hasOwner != 0;
}

} // namespace platform::linux
