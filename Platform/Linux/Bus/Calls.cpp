#include "Platform/Linux/Bus/Calls.h"

#include <cstdint>
#include <string_view>

namespace platform::linux {

bool isFromBus(sd_bus_message* message) {
    const char* sender = sd_bus_message_get_sender(message);
    return sender != nullptr && std::string_view(sender) == "org.freedesktop.DBus";
}

OwnedSlot send(sd_bus* bus, sd_bus_message* call, sd_bus_message_handler_t handler, void* data) {
    constexpr std::uint64_t usualTimeout = 0;
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(bus, &slot, call, handler, data, usualTimeout);
    return OwnedSlot(slot);
}

OwnedSlot listen(sd_bus* bus, const BusMember& signal, sd_bus_message_handler_t handler, void* data) {
    sd_bus_slot* slot = nullptr;
    sd_bus_match_signal_async(bus, &slot, signal.destination, signal.path, signal.interface, signal.name, handler,
                              &ignoreReply, data);
    return OwnedSlot(slot);
}

OwnedSlot listen(sd_bus* bus, const char* rule, sd_bus_message_handler_t handler, void* data) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(bus, &slot, rule, handler, &ignoreReply, data);
    return OwnedSlot(slot);
}

} // namespace platform::linux
