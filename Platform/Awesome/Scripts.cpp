#include "Platform/Awesome/Scripts.h"

#include "Platform/Compositor/Json.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace platform::awesome {

namespace {

using compositor::Json;
using compositor::listIn;
using compositor::numberOf;

/// A maximized window has no position of its own, either.
constexpr std::string_view isLaidOut = R"(
local function isLaidOut(c)
    local tag = c.first_tag or c.screen.selected_tag
    local isTiled = not c.floating and tag and tag.layout ~= require("awful.layout").suit.floating
    return isTiled or c.maximized or c.maximized_horizontal or c.maximized_vertical
end
)";

// Numbers are whole, but some releases of Lua print them as "1.0", and refuse them as "%d".
constexpr std::string_view describe = R"(
local windows, screens = {}, {}
for _, c in ipairs(client.get()) do
    windows[#windows + 1] = string.format('{"id":%.0f,"isTiled":%s}', c.window, isLaidOut(c) and "true" or "false")
end
for s in screen do
    local area = s.workarea
    screens[#screens + 1] = string.format('{"workArea":[%.0f,%.0f,%.0f,%.0f]}', area.x, area.y, area.width, area.height)
end
return '{"windows":[' .. table.concat(windows, ",") .. '],"screens":[' .. table.concat(screens, ",") .. ']}'
)";

// awesome counts the position of the border, and the size within it.
constexpr std::string_view place = R"(
for _, c in ipairs(client.get()) do
    if c.window == id then
        local wasLaidOut = isLaidOut(c)
        c.maximized, c.maximized_horizontal, c.maximized_vertical = false, false, false
        if wasLaidOut and isLaidOut(c) then
            c.floating = true
        end
        local around = 2 * c.border_width
        c:geometry({ x = x, y = y, width = math.max(width - around, 1), height = math.max(height - around, 1) })
        return "placed"
    end
end
return "unknown"
)";

std::string number(double value) {
    // Positions and sizes are 16-bit in the core protocol.
    constexpr double farthest = 32767;
    return std::to_string(std::lround(std::clamp(value, -farthest, farthest)));
}

} // namespace

std::string layoutScript() {
    return std::string(isLaidOut) + std::string(describe);
}

std::optional<x11::Layout> readLayout(std::string_view reply) {
    const auto json = compositor::parsedJson(reply);
    const Json* windows = json ? listIn(*json, "windows") : nullptr;
    const Json* screens = json ? listIn(*json, "screens") : nullptr;
    if (windows == nullptr || screens == nullptr) {
        return std::nullopt;
    }
    x11::Layout layout;
    for (const Json& window : *windows) {
        const auto identifier = numberOf(window, "id").value_or(0);
        if (identifier > 0 && identifier <= std::numeric_limits<xcb_window_t>::max()) {
            layout.windows.insert_or_assign(static_cast<xcb_window_t>(identifier),
                                            x11::Layout::Window{.isTiled = compositor::isSet(window, "isTiled")});
        }
    }
    for (const Json& screen : *screens) {
        const auto area = compositor::rectangleOf(screen, "workArea");
        if (area && area->size.width > 0 && area->size.height > 0) {
            layout.workAreas.push_back(*area);
        }
    }
    return layout;
}

std::string placeScript(xcb_window_t window, const corvid::CGRect& frame) {
    const auto& [origin, size] = frame;
    return "local id, x, y, width, height = " + std::to_string(window) + ", " + number(origin.x) + ", " +
           number(origin.y) + ", " + number(size.width) + ", " + number(size.height) + std::string(isLaidOut) +
           std::string(place);
}

bool isPlaced(std::string_view reply) {
    return reply == "placed";
}

} // namespace platform::awesome
