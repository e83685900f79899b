#pragma once

#include "CorvidKitCore/Geometry.h"

#include <systemd/sd-bus.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform::shellcore {

// The parts of the core's messages. Empty for a value of another type; each read consumes its value.

/// Lives as long as the message does; empty for another type.
[[nodiscard]] std::string_view textOf(sd_bus_message* message);

/// In the shell's space: pixels of the whole layout from its upper left corner.
[[nodiscard]] std::optional<corvid::CGRect> rectangleOf(sd_bus_message* message);

/// The shell's number of a window.
[[nodiscard]] std::optional<std::uint64_t> windowOf(sd_bus_message* message);

} // namespace platform::shellcore
