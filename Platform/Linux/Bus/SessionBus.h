#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Loop/MainLoop.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::linux {

/// The address of the user's message bus: `DBUS_SESSION_BUS_ADDRESS`, or `bus` in `XDG_RUNTIME_DIR` (D-Bus
/// Specification, Well-known Message Bus Instances). Of the former, only local sockets are used: this program opens no
/// connection to another machine and starts no program to reach a bus. Empty if neither names one. Reads the
/// environment.
[[nodiscard]] std::optional<std::string> sessionBusAddress();

/// The address of the system's message bus: `DBUS_SYSTEM_BUS_ADDRESS`, or its well-known place, by the same rules.
[[nodiscard]] std::optional<std::string> systemBusAddress();

/// The connection to a message bus, the user's or the system's, for as long as there is one: a bus that is missing,
/// ends or comes back is followed. Nothing here waits: the bus is greeted and listened to in the event loop. Main
/// thread only.
class SessionBus {
public:
    /// A user of the bus while it is available. The bus object must outlive its listeners.
    class Listener {
    public:
        explicit Listener(SessionBus& bus);
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener();

        /// The bus is there and answers. Also called, in a later turn of the loop, for a bus that was there before the
        /// listener. What is sent must be sent without waiting for the answer.
        virtual void busArrived(sd_bus* bus) = 0;

        /// The connection is gone, and with it everything that was asked or offered on it.
        virtual void busLeft() = 0;

    private:
        SessionBus& bus;
    };

    /// The interval of the search for a missing bus.
    static constexpr Duration usualInterval = std::chrono::seconds(10);

    /// Without an address there is never a bus. The loop must outlive the bus.
    explicit SessionBus(MainLoop& mainLoop, std::optional<std::string> address = sessionBusAddress(),
                        Duration interval = usualInterval);
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus() = default;

    /// Handles the bus alone until the condition holds, at the latest until `deadline`; messages are dispatched
    /// meanwhile. Not from inside a message's handler.
    void await(Instant deadline, const std::function<bool()>& condition);

    /// Waits until the bus is available and its listeners are notified, or until the deadline; returns whether it is.
    /// For programs that cannot start without it; no other source of the loop is served meanwhile.
    bool awaitArrival(Instant deadline);

private:
    static int connected(sd_bus_message* message, void* data, sd_bus_error* error);
    static int disconnected(sd_bus_message* message, void* data, sd_bus_error* error);

    void connect();
    void connectLater();
    void announceArrival();

    MainLoop& mainLoop;
    std::optional<std::string> address;
    Duration interval;
    OwnedBus bus;
    bool isConnected = false;
    std::vector<Listener*> listeners;
    /// Those of the listeners that know of the present connection.
    std::vector<Listener*> informed;
    std::unique_ptr<ScheduledWork> pending;
};

} // namespace platform::linux
