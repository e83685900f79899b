#pragma once

#include <systemd/sd-bus.h>

#include <memory>

namespace platform::linux {

/// Owners of sd-bus objects. A connection is closed without waiting for unsent messages.
struct CloseBus {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};

struct UnreferenceMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

struct UnreferenceSlot {
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};

using OwnedBus = std::unique_ptr<sd_bus, CloseBus>;
using OwnedMessage = std::unique_ptr<sd_bus_message, UnreferenceMessage>;
using OwnedSlot = std::unique_ptr<sd_bus_slot, UnreferenceSlot>;

/// The callback of a call whose outcome changes nothing. Without a callback, sd-bus takes an error reply to AddMatch or
/// RequestName as the end of the connection.
inline int ignoreReply(sd_bus_message* /*reply*/, void* /*data*/, sd_bus_error* /*error*/) {
    return 0;
}

} // namespace platform::linux
