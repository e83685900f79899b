#pragma once

#include "Platform/Linux/Bus/SessionBus.h"

#include <optional>
#include <string>

namespace platform::linux {

/// Has the desktop show short messages (Desktop Notifications Specification 1.2,
/// `org.freedesktop.Notifications.Notify`). The bus starts whoever shows them if need be; where nobody does, they are
/// lost. Main thread only.
class DesktopNotifications final : private SessionBus::Listener {
public:
    /// `name` is what people call the program; `identifier` is the name of its desktop entry and of its icon. The bus
    /// must outlive this.
    DesktopNotifications(SessionBus& bus, std::string name, std::string identifier);

    /// Shows a line, for as long as the desktop likes and with nothing to press. Without waiting; before the bus is
    /// there the last line is kept for it.
    void show(std::string line);

private:
    void busArrived(sd_bus* arrived) override;
    void busLeft() override;

    sd_bus* bus = nullptr;
    std::string name;
    std::string identifier;
    std::optional<std::string> kept;
    OwnedSlot showing;
};

} // namespace platform::linux
