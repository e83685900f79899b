#pragma once

#include "Platform/Linux/Bus/BusHandles.h"

namespace platform::linux {

/// The method that a call is for, or the signal that is listened to.
struct BusMember {
    const char* destination;
    const char* path;
    const char* interface;
    const char* name;
};

/// A method of the bus itself (D-Bus Specification, Message Bus Messages).
[[nodiscard]] constexpr BusMember methodOfBus(const char* name) {
    return {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", name};
}

/// Whether the message comes from the bus itself. Its own signals need that check: other clients may send the same
/// signals to this connection.
[[nodiscard]] bool isFromBus(sd_bus_message* message);

// None of these waits. Each returns the pending operation; destroying that cancels it, and no handler is called any
// more. Null if the library refuses, for example without memory.

/// Calls a method with these values; the handler gets the answer.
template <typename... Values>
[[nodiscard]] OwnedSlot call(sd_bus* bus, const BusMember& method, sd_bus_message_handler_t handler, void* data,
                             const char* types, Values... values) {
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(bus, &slot, method.destination, method.path, method.interface, method.name, handler, data,
                             types, values...);
    return OwnedSlot(slot);
}

/// Sends a call that is made up already.
[[nodiscard]] OwnedSlot send(sd_bus* bus, sd_bus_message* call, sd_bus_message_handler_t handler, void* data);

/// Listens to a signal of one sender.
[[nodiscard]] OwnedSlot listen(sd_bus* bus, const BusMember& signal, sd_bus_message_handler_t handler, void* data);

/// Listens by a match rule.
[[nodiscard]] OwnedSlot listen(sd_bus* bus, const char* rule, sd_bus_message_handler_t handler, void* data);

} // namespace platform::linux
