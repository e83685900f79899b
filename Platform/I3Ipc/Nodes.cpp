#include "Platform/I3Ipc/Nodes.h"

#include <algorithm>

namespace platform::i3ipc {

namespace {

const Json* childWithIdentifier(const Json& node, std::int64_t identifier) {
    const Json* nodes = listIn(node, "nodes");
    if (nodes == nullptr) {
        return nullptr;
    }
    const auto found =
        std::ranges::find_if(*nodes, [&](const Json& each) { return numberOf(each, "id") == identifier; });
    return found == nodes->end() ? nullptr : &*found;
}

} // namespace

std::optional<std::int64_t> focusedWithin(const Json& node) {
    const Json* focus = listIn(node, "focus");
    return focus == nullptr || focus->empty() || !focus->front().is_number_integer()
               ? std::nullopt
               : std::optional(focus->front().get<std::int64_t>());
}

const Json* shownWorkspace(const Json& output) {
    constexpr int farthest = 3;
    const Json* node = &output;
    for (int step = 0; step < farthest && node != nullptr; ++step) {
        const auto focused = focusedWithin(*node);
        node = focused ? childWithIdentifier(*node, *focused) : nullptr;
        if (node != nullptr && textOf(*node, "type") == "workspace") {
            return node;
        }
    }
    return nullptr;
}

} // namespace platform::i3ipc
