#include "Platform/Herbstluftwm/Replies.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <system_error>

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

/// Several commands as one, which prints what they print. It succeeds if the last one does.
Words chain(std::initializer_list<Words> commands) {
    Words joined{"chain"};
    for (const Words& command : commands) {
        joined.emplace_back(",");
        joined.insert(joined.end(), command.begin(), command.end());
    }
    return joined;
}

/// Prints the client at that path of an object, or at that of the identifier that `foreach` replaces.
Words printingClient(const std::string& path) {
    return {"sprintf",
            "W",
            "%c.winid",
            path,
            "sprintf",
            "D",
            "%c.decoration_geometry",
            path,
            "sprintf",
            "C",
            "%c.content_geometry",
            path,
            "sprintf",
            "F",
            "%c.floating_effectively",
            path,
            "sprintf",
            "H",
            "%c.sizehints_floating",
            path,
            "sprintf",
            "T",
            "%c.tag",
            path,
            "sprintf",
            "L",
            "client %s %s %s %s %s %s",
            "W",
            "D",
            "C",
            "F",
            "H",
            "T",
            "echo",
            "L"};
}

/// Prints the widths of a decoration of floating windows, if the theme has all of them.
Words printingTheme(const std::string& kind) {
    Words words{"sprintf", "L", kind + " %s %s %s %s %s %s %s %s"};
    const std::string theme = "theme.floating." + kind + ".";
    for (const char* attribute : {"border_width", "padding_left", "padding_right", "padding_top", "padding_bottom",
                                  "title_height", "title_depth", "title_when"}) {
        words.push_back(theme + attribute);
    }
    words.insert(words.end(), {"echo", "L"});
    return words;
}

std::string number(double value) {
    return std::to_string(std::lround(std::clamp<double>(value, -farthest, farthest)));
}

void readClient(std::string_view line, State& state) {
    const auto number = window(cut(line, ' '));
    const auto decorated = rectangle(cut(line, ' '));
    const auto content = rectangle(cut(line, ' '));
    const bool isTiled = cut(line, ' ') != "true";
    const bool roundsByHints = cut(line, ' ') == "true";
    if (number && decorated && content) {
        state.clients.insert_or_assign(*number, Client{.decorated = *decorated,
                                                       .content = *content,
                                                       .isTiled = isTiled,
                                                       .roundsByHints = roundsByHints,
                                                       .tag = std::string(line)});
    }
}

void readArea(std::string_view line, State& state) {
    const auto area = rectangle(cut(line, ' '));
    if (area && area->size.width > 0 && area->size.height > 0) {
        state.areas.insert_or_assign(std::string(line), *area);
    }
}

/// A floating window has no tabs, so its title is shown always or never; without a height it has none.
std::optional<x11::Extents> readTheme(std::string_view line) {
    std::array<std::int32_t, 7> widths{};
    for (std::int32_t& width : widths) {
        std::string_view word = cut(line, ' ');
        const auto parsed = takeNumber(word, "");
        if (!parsed || !word.empty()) {
            return std::nullopt;
        }
        width = static_cast<std::int32_t>(*parsed);
    }
    const auto [border, left, right, top, bottom, titleHeight, titleDepth] = widths;
    const std::int32_t title = line == "always" && titleHeight > 0 ? titleHeight + titleDepth : 0;
    return x11::Extents{
        .left = border + left, .right = border + right, .top = border + top + title, .bottom = border + bottom};
}

} // namespace

Client Client::withDecoration(const x11::Extents& extents) const {
    Client changed = *this;
    changed.content = {
        {decorated.origin.x + extents.left, decorated.origin.y + extents.top},
        {decorated.size.width - extents.left - extents.right, decorated.size.height - extents.top - extents.bottom}};
    return changed;
}

bool Client::hasDecorationOf(const Client& other) const {
    const auto around = [](const Client& client) {
        return CGRect{
            {client.content.origin.x - client.decorated.origin.x, client.content.origin.y - client.decorated.origin.y},
            {client.decorated.size.width - client.content.size.width,
             client.decorated.size.height - client.content.size.height}};
    };
    return around(*this) == around(other);
}

Words stateCommand() {
    Words clients{"foreach", "O", "clients."};
    for (const std::string& word : printingClient("O")) {
        clients.push_back(word);
    }
    // Children that are no monitors print nothing. One is the focused monitor, once more.
    return chain({clients,
                  {"foreach", "O", "monitors.", "sprintf", "A", "%c.content_geometry", "O", "sprintf", "T", "%c.tag",
                   "O", "sprintf", "L", "area %s %s", "A", "T", "echo", "L"},
                  {"sprintf", "L", "focus %s", "clients.focus.winid", "echo", "L"},
                  printingTheme("active"),
                  printingTheme("normal"),
                  {"true"}});
}

State readState(std::string_view output) {
    State state;
    while (!output.empty()) {
        std::string_view line = cut(output, '\n');
        const std::string_view kind = cut(line, ' ');
        if (kind == "client") {
            readClient(line, state);
        } else if (kind == "area") {
            readArea(line, state);
        } else if (kind == "focus") {
            state.focused = window(line).value_or(XCB_WINDOW_NONE);
        } else if (kind == "active") {
            state.aroundFocused = readTheme(line);
        } else if (kind == "normal") {
            state.aroundOthers = readTheme(line);
        }
    }
    return state;
}

x11::Layout layoutOf(const State& state) {
    x11::Layout layout;
    for (const auto& [window, client] : state.clients) {
        layout.windows.emplace(window, x11::Layout::Window{.isTiled = client.isTiled,
                                                           .bordersOutside = extentsOutside(window, state),
                                                           .roundsByHints = client.roundsByHints});
    }
    for (const auto& [tag, area] : state.areas) {
        layout.workAreas.push_back(area);
    }
    return layout;
}

const std::optional<x11::Extents>& extentsOutside(xcb_window_t window, const State& state) {
    return window == state.focused ? state.aroundFocused : state.aroundOthers;
}

corvid::CGPoint originOf(const Client& client, const State& state) {
    // A hidden tag is on no monitor, and comes to any of them.
    const auto shown = state.areas.find(client.tag);
    return (shown == state.areas.end() ? state.areas.begin() : shown)->second.origin;
}

Words placeCommand(xcb_window_t window, const Client& present, corvid::CGPoint origin, const CGRect& frame) {
    const auto& [decorated, content, isTiled, roundsByHints, tag] = present;
    const std::string client = objectOf(window);
    const std::string geometry =
        number(std::max(frame.size.width - decorated.size.width + content.size.width, 1.0)) + "x" +
        number(std::max(frame.size.height - decorated.size.height + content.size.height, 1.0)) + "+" +
        number(frame.origin.x + content.origin.x - decorated.origin.x - origin.x) + "+" +
        number(frame.origin.y + content.origin.y - decorated.origin.y - origin.y);
    const Words place{"set_attr", client + ".floating_geometry", geometry};
    const Words release = isTiled ? Words{"set_attr", client + ".floating", "true"} : Words{"true"};
    return chain({place, release, printingClient(client)});
}

} // namespace platform::herbstluftwm
