#pragma once

#include "Platform/Linux/Bus/SessionBus.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <variant>

namespace platform::linux {

/// A private desktop portal, while it lives, with settings that can be set.
class SettingsPortal final : private SessionBus::Listener {
public:
    /// Namespace and name.
    using Key = std::pair<std::string, std::string>;
    using Value = std::variant<std::uint32_t, bool, std::string>;
    using Settings = std::map<Key, Value>;

    static constexpr const char* name = "org.freedesktop.portal.Desktop";

    SettingsPortal(SessionBus& bus, Settings settings)
        : Listener(bus)
        , settings(std::move(settings)) {}

    /// Sets it, and emits the signal.
    void set(const Key& key, const Value& value);

    /// Sets it without a signal.
    void remove(const Key& key) { settings.erase(key); }

    /// Whether all its messages have been sent.
    [[nodiscard]] bool hasFlushed() const;

    bool isThere = false;
    bool knowsBus = false;
    /// Answers every request with an error.
    bool isUnwilling = false;
    /// The number of requests for all settings.
    int questions = 0;

private:
    void busArrived(sd_bus* arrived) override;
    void busLeft() override { bus = nullptr; }

    static int named(sd_bus_message* reply, void* data, sd_bus_error* error);
    static int called(sd_bus_message* call, void* data, sd_bus_error* error);

    int answer(sd_bus_message* call) const;

    Settings settings;
    sd_bus* bus = nullptr;
    OwnedSlot object;
    OwnedSlot naming;
};

} // namespace platform::linux
