#include "Platform/Herbstluftwm/Replies.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <map>
#include <utility>

namespace platform::herbstluftwm {

namespace {

using corvid::CGRect;
using Words = std::vector<std::string>;

// Positions and sizes are 16-bit in the core protocol.
constexpr long farthest = 32767;

/// The text up to the separator, which is removed with it; all of it without a separator.
std::string_view cut(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

/// A number at the beginning of the text, which is removed with the sign or letter before it.
std::optional<double> takeNumber(std::string_view& text, std::string_view signs) {
    if (!signs.empty()) {
        if (text.empty() || !signs.contains(text.front())) {
            return std::nullopt;
        }
        // The parser knows the minus sign.
        text.remove_prefix(text.front() == '-' ? 0 : 1);
    }
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || std::abs(value) > farthest) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

/// A rectangle as in "484x316+1100-20".
std::optional<CGRect> rectangle(std::string_view text) {
    const auto width = takeNumber(text, "");
    const auto height = takeNumber(text, "x");
    const auto x = takeNumber(text, "+-");
    const auto y = takeNumber(text, "+-");
    if (!width || !height || !x || !y || !text.empty() || *width < 0 || *height < 0) {
        return std::nullopt;
    }
    return CGRect{{*x, *y}, {*width, *height}};
}

/// The window as herbstluftwm names it, "0x80000c".
std::optional<xcb_window_t> window(std::string_view text) {
    constexpr std::string_view prefix = "0x";
    xcb_window_t number = XCB_WINDOW_NONE;
    if (!text.starts_with(prefix)) {
        return std::nullopt;
    }
    text.remove_prefix(prefix.size());
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    const bool isWhole = error == std::errc{} && end == text.data() + text.size() && number != XCB_WINDOW_NONE;
    return isWhole ? std::optional(number) : std::nullopt;
}

std::string objectOf(xcb_window_t window) {
    constexpr std::size_t most = 8;
    std::string digits(most, '0');
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), window, 16);
    digits.resize(static_cast<std::size_t>(end - digits.data()));
    return "clients.0x" + digits;
}

/// Prints "area", the object's path, the free area of the monitor and its tag. Children that are no monitors print
/// nothing.
const Words monitorsCommand{"foreach", "M",      "monitors.", "sprintf", "A", "%c.content_geometry", "M", "sprintf",
                            "T",       "%c.tag", "M",         "sprintf", "L", "area %c %s %s",       "M", "A",
                            "T",       "echo",   "L"};

/// Several commands as one. It succeeds if the last one does.
Words chain(std::initializer_list<Words> commands) {
    Words joined{"chain"};
    for (const Words& command : commands) {
        joined.emplace_back(",");
        joined.insert(joined.end(), command.begin(), command.end());
    }
    return joined;
}

/// The free areas of the monitors, by their tags. `monitors.focus` is one of the others once more.
std::map<std::string_view, CGRect> areasIn(std::string_view output) {
    std::map<std::string_view, CGRect> areas;
    while (!output.empty()) {
        std::string_view line = cut(output, '\n');
        if (cut(line, ' ') == "area") {
            cut(line, ' ');
            if (const auto area = rectangle(cut(line, ' ')); area && area->size.width > 0 && area->size.height > 0) {
                areas.insert_or_assign(line, *area);
            }
        }
    }
    return areas;
}

} // namespace

Words layoutCommand() {
    return chain({{"foreach", "C", "clients.", "sprintf", "W", "%c.winid", "C", "sprintf", "F",
                   "%c.floating_effectively", "C", "sprintf", "L", "window %s %s", "W", "F", "echo", "L"},
                  monitorsCommand,
                  {"true"}});
}

x11::Layout readLayout(std::string_view output) {
    x11::Layout layout;
    for (const auto& [tag, area] : areasIn(output)) {
        layout.workAreas.push_back(area);
    }
    while (!output.empty()) {
        std::string_view line = cut(output, '\n');
        if (cut(line, ' ') == "window") {
            if (const auto number = window(cut(line, ' '))) {
                layout.windows.insert_or_assign(*number, x11::Layout::Window{.isTiled = line != "true"});
            }
        }
    }
    return layout;
}

Words releaseCommand(xcb_window_t window) {
    const std::string client = objectOf(window);
    return chain({{"or", ";", "compare", client + ".floating_effectively", "=", "true", ";", "set_attr",
                   client + ".floating", "true"},
                  monitorsCommand,
                  {"sprintf", "L", "client %s %s %s", client + ".decoration_geometry", client + ".content_geometry",
                   client + ".tag", "echo", "L"}});
}

std::optional<Words> placeCommand(xcb_window_t window, std::string_view released, const CGRect& frame) {
    const auto areas = areasIn(released);
    while (!released.empty()) {
        std::string_view line = cut(released, '\n');
        if (cut(line, ' ') != "client") {
            continue;
        }
        const auto decorated = rectangle(cut(line, ' '));
        const auto content = rectangle(cut(line, ' '));
        if (!decorated || !content || areas.empty()) {
            return std::nullopt;
        }
        // A hidden tag is on no monitor, and comes to any of them.
        const auto shown = areas.find(line);
        const corvid::CGPoint origin = (shown == areas.end() ? areas.begin() : shown)->second.origin;
        const auto number = [](double value) {
            return std::to_string(std::lround(std::clamp<double>(value, -farthest, farthest)));
        };
        const double width = frame.size.width - decorated->size.width + content->size.width;
        const double height = frame.size.height - decorated->size.height + content->size.height;
        const double x = frame.origin.x + content->origin.x - decorated->origin.x - origin.x;
        const double y = frame.origin.y + content->origin.y - decorated->origin.y - origin.y;
        return Words{"set_attr", objectOf(window) + ".floating_geometry",
                     number(std::max(width, 1.0)) + "x" + number(std::max(height, 1.0)) + "+" + number(x) + "+" +
                         number(y)};
    }
    return std::nullopt;
}

} // namespace platform::herbstluftwm
