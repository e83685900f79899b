#pragma once

#include "Platform/Compositor/Json.h"

#include <cstdint>
#include <optional>

/// The nodes of a layout, as far as sway and i3 agree on them (sway-ipc(7), GET_TREE; i3's "IPC interface", "Tree
/// reply").
namespace platform::i3ipc {

using compositor::isSet;
using compositor::Json;
using compositor::listIn;
using compositor::member;
using compositor::nameOf;
using compositor::numberOf;
using compositor::parsedJson;
using compositor::rectangleOf;
using compositor::textOf;

/// The id of the node within that has the focus or had it last; empty without one.
[[nodiscard]] std::optional<std::int64_t> focusedWithin(const Json& node);

/// The visible workspace of an output: the first in the order of focus. In i3 there is a container in between. Null
/// without one.
[[nodiscard]] const Json* shownWorkspace(const Json& output);

} // namespace platform::i3ipc
