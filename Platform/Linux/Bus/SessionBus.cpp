#include "Platform/Linux/Bus/SessionBus.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace platform::linux {

namespace {

/// The signals by which the library reports the state of the connection (sd_bus_set_connected_signal(3)).
constexpr const char* localName = "org.freedesktop.DBus.Local";
constexpr const char* localPath = "/org/freedesktop/DBus/Local";
/// D-Bus Specification, Well-known Message Bus Instances.
constexpr const char* wellKnownSystemBus = "unix:path=/var/run/dbus/system_bus_socket";

/// The local sockets out of a list of addresses. A semicolon always separates: within an address it is escaped (D-Bus
/// Specification, Server Addresses).
std::string localSockets(std::string_view addresses) {
    std::string kept;
    while (!addresses.empty()) {
        const std::size_t end = std::min(addresses.find(';'), addresses.size());
        const std::string_view address = addresses.substr(0, end);
        addresses.remove_prefix(std::min(end + 1, addresses.size()));
        if (address.starts_with("unix:")) {
            kept += kept.empty() ? "" : ";";
            kept += address;
        }
    }
    return kept;
}

/// A path as the value of an address's key: every byte that need not be escaped stays (D-Bus Specification, Server
/// Addresses).
std::string escaped(std::string_view path) {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_/.\\*";
    std::string text;
    for (const char character : path) {
        if (plain.contains(character)) {
            text += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        text += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
    }
    return text;
}

/// The address in the variable; `otherwise` where it is not set.
template <typename Otherwise>
std::optional<std::string> namedAddress(const char* variable, const Otherwise& otherwise) {
    // The environment stays as it was at the start.
    const char* named = std::getenv(variable); // NOLINT(concurrency-mt-unsafe)
    if (named == nullptr || *named == '\0') {
        return otherwise();
    }
    std::string local = localSockets(named);
    return local.empty() ? std::nullopt : std::optional{std::move(local)};
}

std::optional<std::string> addressInRuntimeFolder() {
    const char* folder = std::getenv("XDG_RUNTIME_DIR"); // NOLINT(concurrency-mt-unsafe)
    if (folder != nullptr && std::string_view{folder}.starts_with('/')) {
        return "unix:path=" + escaped(std::string(folder) + "/bus");
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> sessionBusAddress() {
    return namedAddress("DBUS_SESSION_BUS_ADDRESS", addressInRuntimeFolder);
}

std::optional<std::string> systemBusAddress() {
    return namedAddress("DBUS_SYSTEM_BUS_ADDRESS", [] { return std::optional<std::string>(wellKnownSystemBus); });
}

SessionBus::Listener::Listener(SessionBus& bus)
    : bus(bus) {
    bus.listeners.push_back(this);
    if (bus.isConnected) {
        bus.pending = bus.mainLoop.schedule(bus.mainLoop.now(), {}, [&bus] { bus.announceArrival(); });
    }
}

SessionBus::Listener::~Listener() {
    std::erase(bus.listeners, this);
    std::erase(bus.informed, this);
}

SessionBus::SessionBus(MainLoop& mainLoop, std::optional<std::string> address, Duration interval)
    : mainLoop(mainLoop)
    , address(std::move(address))
    , interval(interval) {
    connect();
}

void SessionBus::connect() {
    if (!address) {
        return;
    }
    sd_bus* raw = nullptr;
    if (sd_bus_new(&raw) < 0) {
        connectLater();
        return;
    }
    bus.reset(raw);
    // An end of the loop must not wait for a bus that hangs.
    const bool started =
        sd_bus_set_address(raw, address->c_str()) >= 0 && sd_bus_set_bus_client(raw, 1) >= 0 &&
        sd_bus_negotiate_fds(raw, 0) >= 0 && sd_bus_set_connected_signal(raw, 1) >= 0 &&
        sd_bus_set_close_on_exit(raw, 0) >= 0 &&
        sd_bus_match_signal(raw, nullptr, localName, localPath, localName, "Connected", &connected, this) >= 0 &&
        sd_bus_match_signal(raw, nullptr, localName, localPath, localName, "Disconnected", &disconnected, this) >= 0 &&
        sd_bus_start(raw) >= 0 && sd_bus_attach_event(raw, mainLoop.handle(), SD_EVENT_PRIORITY_NORMAL) >= 0;
    if (!started) {
        bus.reset();
        connectLater();
    }
}

void SessionBus::await(Instant deadline, const std::function<bool()>& condition) {
    while (bus != nullptr && !condition()) {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - mainLoop.now());
        const int progress = left.count() > 0 ? sd_bus_process(bus.get(), nullptr) : -ETIMEDOUT;
        if (progress < 0 || (progress == 0 && sd_bus_wait(bus.get(), static_cast<std::uint64_t>(left.count())) < 0)) {
            return;
        }
    }
}

bool SessionBus::awaitArrival(Instant deadline) {
    await(deadline, [this] { return isConnected; });
    return isConnected;
}

void SessionBus::connectLater() {
    // No code waits for a lost bus, so this wake-up may be joined with others.
    pending = mainLoop.schedule(mainLoop.now() + interval, interval / 10, [this] { connect(); });
}

int SessionBus::connected(sd_bus_message* /*message*/, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<SessionBus*>(data);
    self.isConnected = true;
    self.announceArrival();
    return 0;
}

int SessionBus::disconnected(sd_bus_message* /*message*/, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<SessionBus*>(data);
    self.isConnected = false;
    for (Listener* listener : std::exchange(self.informed, {})) {
        listener->busLeft();
    }
    self.bus.reset();
    self.connectLater();
    return 0;
}

void SessionBus::announceArrival() {
    for (Listener* listener : listeners) {
        if (std::ranges::find(informed, listener) == informed.end()) {
            informed.push_back(listener);
            listener->busArrived(bus.get());
        }
    }
}

} // namespace platform::linux
