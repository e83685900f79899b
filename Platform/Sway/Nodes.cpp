#include "Platform/Sway/Nodes.h"

#include <algorithm>
#include <cstdint>

namespace platform::sway {

namespace {

const Json* childWithIdentifier(const Json& node, std::int64_t identifier) {
    const Json* nodes = member(node, "nodes");
    if (nodes == nullptr || !nodes->is_array()) {
        return nullptr;
    }
    const auto found =
        std::ranges::find_if(*nodes, [&](const Json& each) { return numberOf(each, "id") == identifier; });
    return found == nodes->end() ? nullptr : &*found;
}

} // namespace

std::optional<corvid::CGRect> rectOf(const Json& node, const char* name) {
    const Json* rect = member(node, name);
    if (rect == nullptr) {
        return std::nullopt;
    }
    constexpr std::int64_t farthest = 1 << 20;
    const auto number = [&](const char* part) -> std::optional<double> {
        const auto value = numberOf(*rect, part);
        const bool isSane = value && *value >= -farthest && *value <= farthest;
        return isSane ? std::optional(static_cast<double>(*value)) : std::nullopt;
    };
    const auto x = number("x");
    const auto y = number("y");
    const auto width = number("width");
    const auto height = number("height");
    if (!x || !y || !width || !height || *width < 0 || *height < 0) {
        return std::nullopt;
    }
    return corvid::CGRect{{*x, *y}, {*width, *height}};
}

const Json* shownWorkspace(const Json& output) {
    constexpr int farthest = 3;
    const Json* node = &output;
    for (int step = 0; step < farthest && node != nullptr; ++step) {
        const Json* focus = member(*node, "focus");
        if (focus == nullptr || !focus->is_array() || focus->empty() || !focus->front().is_number_integer()) {
            return nullptr;
        }
        node = childWithIdentifier(*node, focus->front().get<std::int64_t>());
        if (node != nullptr && textOf(*node, "type") == "workspace") {
            return node;
        }
    }
    return nullptr;
}

} // namespace platform::sway
