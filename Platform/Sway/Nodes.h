#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Sway/Json.h"

#include <optional>

/// What the nodes of a layout have in common, in sway as in i3 (sway-ipc(7), GET_TREE; i3's "IPC interface", "Tree
/// reply").
namespace platform::sway {

/// A rectangle of the node, in the space of the layout; nothing where it makes no sense.
[[nodiscard]] std::optional<corvid::CGRect> rectOf(const Json& node, const char* name);

/// The workspace that an output shows: the first in the order of focus. In i3 there is a container between. Null where
/// there is none.
[[nodiscard]] const Json* shownWorkspace(const Json& output);

} // namespace platform::sway
