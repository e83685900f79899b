#pragma once

#include "Platform/Compositor/Window.h"
#include "Platform/Wayfire/Message.h"
#include "Platform/Wayfire/Views.h"

#include <optional>
#include <string>

namespace platform::wayfire {

/// The question for the layout of the plugin "simple-tile" that a view may be in: that of its workspace. Wayfire
/// refuses it where the plugin is not loaded.
[[nodiscard]] Request layoutRequest(const ViewFacts& view);

/// The request that takes a view out of the layout, which the answer to that question has; the others close the gap.
/// Nothing if it is not in there. (Wayfire 0.10, plugins/tile: of each node the answer has the share as "percent", and
/// the request wants it as "weight". A view that a new layout leaves out floats.)
[[nodiscard]] std::optional<Request>
removingRequest(const ViewFacts& view, const compositor::WindowIdentifier& identifier, const Json& answer);

} // namespace platform::wayfire
