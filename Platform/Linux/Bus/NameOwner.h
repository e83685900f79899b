#pragma once

#include "Platform/Linux/Bus/BusHandles.h"

#include <functional>
#include <string>

namespace platform::linux {

/// Follows the owner of a name on a message bus (D-Bus Specification, NameOwnerChanged). Main thread only.
class NameOwner {
public:
    /// `changed` is called while the bus is being read, after each change and after the first answer; it must not wait
    /// for the bus.
    NameOwner(std::string name, std::function<void()> changed);
    NameOwner(const NameOwner&) = delete;
    NameOwner& operator=(const NameOwner&) = delete;
    ~NameOwner() = default;

    /// Begins to follow on this connection, and requests the present owner; does not wait.
    void follow(sd_bus* bus);
    /// The same without asking: the owner is not known before it changes.
    void followChanges(sd_bus* bus);
    /// The connection is gone, and with it the owner. Does not call `changed`.
    void forget();

    /// The owner's unique name; empty while there is none, or none is known yet.
    [[nodiscard]] const std::string& owner() const { return unique; }

    /// Whether the message comes from the owner.
    [[nodiscard]] bool sent(sd_bus_message* message) const;

private:
    static int ownerChanged(sd_bus_message* signal, void* data, sd_bus_error* error);
    static int ownerAnswered(sd_bus_message* reply, void* data, sd_bus_error* error);

    void set(const char* owner);

    std::string name;
    std::function<void()> changed;
    std::string unique;
    OwnedSlot changes;
    OwnedSlot question;
};

} // namespace platform::linux
