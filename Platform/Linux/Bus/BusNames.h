#pragma once

#include <optional>
#include <string>

namespace platform::linux {

/// Whether that name has an owner on the bus (D-Bus Specification, NameHasOwner). Uses a connection of its own and
/// waits, for at most half a second; false without a bus or a reply.
[[nodiscard]] bool hasOwnerOnBus(const std::optional<std::string>& address, const std::string& name);

} // namespace platform::linux
