#pragma once

#include "CorvidKitCore/Geometry.h"

#include <systemd/sd-bus.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform::gnomeshell {

// What a message of the extension's consists of. Nothing where it is of another type; what was read is read no more.

/// Lives as long as the message does; empty where it is of another type.
[[nodiscard]] std::string_view textOf(sd_bus_message* message);

/// In the space that the shell gives: pixels of the whole layout from its upper left corner.
[[nodiscard]] std::optional<corvid::CGRect> rectangleOf(sd_bus_message* message);

/// The number by which the shell knows a window.
[[nodiscard]] std::optional<std::uint64_t> windowOf(sd_bus_message* message);

} // namespace platform::gnomeshell
