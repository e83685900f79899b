#pragma once

#include <optional>
#include <string>

namespace platform::linux {

/// Whether somebody has that name on the bus (D-Bus Specification, NameHasOwner). Asks over a connection of its own and
/// waits, for at most half a second; no where there is no bus or it does not answer.
[[nodiscard]] bool hasOwnerOnBus(const std::optional<std::string>& address, const std::string& name);

} // namespace platform::linux
