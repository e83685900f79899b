#include "Platform/Linux/DesktopNotifications.h"

#include "Platform/Linux/Bus/Calls.h"

#include <cstdint>
#include <utility>

namespace platform::linux {

namespace {

constexpr BusMember notifyMethod{"org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                                 "org.freedesktop.Notifications", "Notify"};

} // namespace

DesktopNotifications::DesktopNotifications(SessionBus& bus, std::string name, std::string identifier)
    : Listener(bus)
    , name(std::move(name))
    , identifier(std::move(identifier)) {
}

void DesktopNotifications::show(std::string line) {
    if (bus == nullptr) {
        kept = std::move(line);
        return;
    }
    constexpr std::uint32_t replacesNone = 0;
    constexpr int noActions = 0;
    constexpr int oneHint = 1;
    constexpr std::int32_t asTheDesktopLikes = -1;
    showing =
        call(bus, notifyMethod, &ignoreReply, nullptr, "susssasa{sv}i", name.c_str(), replacesNone, identifier.c_str(),
             line.c_str(), "", noActions, oneHint, "desktop-entry", "s", identifier.c_str(), asTheDesktopLikes);
}

void DesktopNotifications::busArrived(sd_bus* arrived) {
    bus = arrived;
    if (std::optional<std::string> line = std::exchange(kept, std::nullopt)) {
        show(*std::move(line));
    }
}

void DesktopNotifications::busLeft() {
    bus = nullptr;
    showing.reset();
}

} // namespace platform::linux
