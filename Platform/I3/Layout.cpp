#include "Platform/I3/Layout.h"

#include "Platform/I3Ipc/Nodes.h"

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace platform::i3 {

namespace {

using i3ipc::Json;
using i3ipc::numberOf;
using i3ipc::textOf;

/// Larger than any border or title bar.
constexpr std::int64_t thickestBorder = 4096;

/// A pending container, and the one around it.
struct Visit {
    const Json* node;
    const Json* parent;
};

bool isOfType(const Json& node, std::string_view type) {
    return textOf(node, "type") == type;
}

std::optional<corvid::CGRect> areaOf(const Json& node) {
    const auto rect = i3ipc::rectangleOf(node, "rect");
    return rect && rect->size.width > 0 && rect->size.height > 0 ? rect : std::nullopt;
}

std::optional<xcb_window_t> windowOf(const Json& node) {
    const auto number = numberOf(node, "window").value_or(0);
    const bool isOne = number > 0 && number <= std::numeric_limits<xcb_window_t>::max();
    return isOne ? std::optional(static_cast<xcb_window_t>(number)) : std::nullopt;
}

void addChildren(std::vector<Visit>& waiting, const Json& node) {
    for (const char* name : {"nodes", "floating_nodes"}) {
        if (const Json* children = i3ipc::listIn(node, name)) {
            for (const Json& child : *children) {
                waiting.push_back({.node = &child, .parent = &node});
            }
        }
    }
}

/// The height of the title bar, or of the tab in its place, which is equal; empty if the node has neither.
std::optional<std::int32_t> titleHeight(const Json& node) {
    const auto title = i3ipc::rectangleOf(node, "deco_rect");
    const bool isThere = title && title->size.height > 0 && title->size.height <= thickestBorder;
    return isThere ? std::optional(static_cast<std::int32_t>(title->size.height)) : std::nullopt;
}

/// The borders that i3 draws around the window when it floats. The layout may hide some of them.
std::optional<x11::Extents> bordersOutside(const Json& node) {
    const std::string_view style = textOf(node, "border");
    if (style == "none") {
        return x11::Extents{};
    }
    const std::int64_t reported = numberOf(node, "current_border_width").value_or(-1);
    if (reported < 0 || reported > thickestBorder) {
        return std::nullopt;
    }
    const auto width = static_cast<std::int32_t>(reported);
    if (style == "pixel") {
        return x11::widened({}, width);
    }
    const auto title = titleHeight(node);
    if (style == "normal" && title) {
        return x11::Extents{.left = width, .right = width, .top = *title, .bottom = width};
    }
    return std::nullopt;
}

void readWindow(const Visit& visit, x11::Layout& layout) {
    const auto window = windowOf(*visit.node);
    const bool isTiled = !isOfType(*visit.parent, "floating_con");
    const auto drawn = areaOf(*visit.node);
    const auto frame = isTiled ? drawn : areaOf(*visit.parent);
    if (window && drawn && frame) {
        const auto outside = isTiled ? bordersOutside(*visit.node) : std::nullopt;
        layout.windows.emplace(
            *window,
            x11::Layout::Window{.frame = frame, .drawn = drawn, .isTiled = isTiled, .bordersOutside = outside});
    }
}

/// The area between the bars of an output: its workspaces.
void readContent(const Json& content, x11::Layout& layout) {
    if (const Json* shown = i3ipc::shownWorkspace(content)) {
        if (const auto area = areaOf(*shown)) {
            layout.workAreas.push_back(*area);
        }
    }
    std::vector<Visit> waiting;
    addChildren(waiting, content);
    while (!waiting.empty()) {
        const Visit visit = waiting.back();
        waiting.pop_back();
        readWindow(visit, layout);
        addChildren(waiting, *visit.node);
    }
}

} // namespace

std::optional<x11::Layout> readLayout(const Json& answer) {
    if (!isOfType(answer, "root")) {
        return std::nullopt;
    }
    x11::Layout layout;
    std::vector<Visit> outputs;
    addChildren(outputs, answer);
    for (const Visit& output : outputs) {
        // The scratchpad is on an output of this name, which no other output can have.
        if (!isOfType(*output.node, "output") || textOf(*output.node, "name") == "__i3") {
            continue;
        }
        std::vector<Visit> parts;
        addChildren(parts, *output.node);
        for (const Visit& part : parts) {
            if (isOfType(*part.node, "con")) {
                readContent(*part.node, layout);
            }
        }
    }
    return layout;
}

} // namespace platform::i3
