#pragma once

#include <systemd/sd-bus.h>

#include <memory>

namespace platform::linux {

/// What is owned of sd-bus, each given back with its owner. A connection is closed without waiting for what it still
/// has to send.
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

} // namespace platform::linux
