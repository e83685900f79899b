#pragma once

#include "Platform/Compositor/Json.h"
#include "Platform/X11/TilingManager.h"

#include <cstdint>
#include <optional>

namespace platform::bspwm {

/// Parses the reply to `wm --dump-state` (bspc(1)). Implausible entries are left out; empty without a list of monitors.
///
/// X11 has the frames: bspwm draws nothing but the border that the server draws around each client. It makes room for
/// docks and for the user's paddings without saying so on the root window, so the work areas come from here.
[[nodiscard]] std::optional<x11::Layout> readLayout(const compositor::Json& state);

/// The border of a floating window out of the reply to `query --tree --node` of that window, in pixels; empty for any
/// other reply.
[[nodiscard]] std::optional<std::int32_t> borderOf(const compositor::Json& node);

} // namespace platform::bspwm
