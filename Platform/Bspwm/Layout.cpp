#include "Platform/Bspwm/Layout.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <vector>

namespace platform::bspwm {

namespace {

using compositor::Json;
using compositor::listIn;
using compositor::member;
using compositor::numberOf;
using compositor::textOf;

void readWindow(const Json& node, x11::Layout& layout) {
    const Json* client = member(node, "client");
    const auto number = numberOf(node, "id").value_or(0);
    if (client == nullptr || !client->is_object() || number <= 0 || number > std::numeric_limits<xcb_window_t>::max()) {
        return;
    }
    // The other states are "tiled" and "pseudo_tiled", and "fullscreen", which is also a state on the window.
    const bool isTiled = textOf(*client, "state") != "floating";
    layout.windows.insert_or_assign(static_cast<xcb_window_t>(number), x11::Layout::Window{.isTiled = isTiled});
}

/// The windows of a desktop: the leaves of its tree.
void readWindows(const Json& desktop, x11::Layout& layout) {
    std::vector<const Json*> waiting{member(desktop, "root")};
    while (!waiting.empty()) {
        const Json* node = waiting.back();
        waiting.pop_back();
        if (node != nullptr && node->is_object()) {
            readWindow(*node, layout);
            waiting.push_back(member(*node, "firstChild"));
            waiting.push_back(member(*node, "secondChild"));
        }
    }
}

/// The area without the paddings of the monitor or of the desktop.
corvid::CGRect padded(const corvid::CGRect& area, const Json& padding) {
    const auto side = [&](const char* name) {
        constexpr std::int64_t widest = 32767;
        return static_cast<double>(std::clamp<std::int64_t>(numberOf(padding, name).value_or(0), -widest, widest));
    };
    const double left = side("left");
    const double top = side("top");
    return {{area.origin.x + left, area.origin.y + top},
            {area.size.width - left - side("right"), area.size.height - top - side("bottom")}};
}

void readMonitor(const Json& monitor, x11::Layout& layout) {
    const Json* desktops = listIn(monitor, "desktops");
    auto area = compositor::rectangleOf(monitor, "rectangle");
    const auto reduce = [&area](const Json& owner) {
        const Json* padding = member(owner, "padding");
        if (area && padding != nullptr) {
            area = padded(*area, *padding);
        }
    };
    reduce(monitor);
    const auto shown = numberOf(monitor, "focusedDesktopId");
    for (const Json& desktop : desktops == nullptr ? Json::array() : *desktops) {
        readWindows(desktop, layout);
        if (shown && numberOf(desktop, "id") == shown) {
            reduce(desktop);
        }
    }
    if (area && area->size.width > 0 && area->size.height > 0) {
        layout.workAreas.push_back(*area);
    }
}

} // namespace

std::optional<x11::Layout> readLayout(const Json& state) {
    const Json* monitors = listIn(state, "monitors");
    if (monitors == nullptr) {
        return std::nullopt;
    }
    x11::Layout layout;
    for (const Json& monitor : *monitors) {
        readMonitor(monitor, layout);
    }
    return layout;
}

std::optional<std::int32_t> borderOf(const Json& node) {
    constexpr std::int64_t widest = 4096;
    const Json* client = member(node, "client");
    const auto width = client == nullptr ? std::nullopt : numberOf(*client, "borderWidth");
    return width && *width >= 0 && *width <= widest ? std::optional(static_cast<std::int32_t>(*width)) : std::nullopt;
}

} // namespace platform::bspwm
