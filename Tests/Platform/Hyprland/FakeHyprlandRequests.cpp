#include "Tests/Platform/Hyprland/FakeHyprland.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <regex>

namespace {

using nlohmann::json;

std::vector<std::string> parts(const std::string& text, const std::regex& expression) {
    return {std::sregex_token_iterator(text.begin(), text.end(), expression, -1), std::sregex_token_iterator()};
}

int modifiersIn(const std::string& names) {
    return (names.contains("SHIFT") ? 1 : 0) + (names.contains("CTRL") ? 4 : 0) + (names.contains("ALT") ? 8 : 0) +
           (names.contains("SUPER") ? 64 : 0);
}

} // namespace

std::string writtenAddress(std::uint64_t address) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "0x%llx", static_cast<unsigned long long>(address));
    return text.data();
}

std::string FakeHyprland::result(const std::string& request) {
    if (request == "status") {
        return configuration == Configuration::lua        ? "configProvider: lua\n"
               : configuration == Configuration::hyprlang ? "configProvider: hyprlang\n"
                                                          : "unknown request";
    }
    if (request == "j/clients") {
        return clients();
    }
    if (request == "j/monitors") {
        return monitorList();
    }
    if (request == "j/activewindow") {
        return find(focused) == nullptr ? "{}" : json{{"address", writtenAddress(focused)}}.dump();
    }
    if (request == "j/cursorpos") {
        return "\n{\n    \"x\": 300,\n    \"y\": 40\n}\n";
    }
    if (request == "j/getoption general:border_size") {
        return json{{"option", "general:border_size"}, {"int", border}, {"set", true}}.dump();
    }
    if (request == "j/binds") {
        return bindList();
    }
    if (request == "j/globalshortcuts") {
        return globalShortcuts;
    }
    return request.starts_with("j/getprop ") ? property(request) : order(request);
}

std::string FakeHyprland::monitorList() const {
    std::string list;
    for (const Monitor& each : monitors) {
        list += (list.empty() ? "" : ",") + std::string(R"({"width":)") + std::to_string(each.width) + R"(,"height":)" +
                std::to_string(each.height) + R"(,"x":)" + std::to_string(each.x) + R"(,"y":)" +
                std::to_string(each.y) + R"(,"reserved":)" + json(each.reserved).dump() + R"(,"scale":)" + each.scale +
                R"(,"transform":)" + std::to_string(each.transform) + R"(,"disabled":false,"mirrorOf":"none"})";
    }
    return "[" + list + "]";
}

std::string FakeHyprland::bindList() const {
    json list = json::array();
    for (const Bind& each : bindings) {
        list.push_back({{"modmask", each.modifiers},
                        {"key", each.key},
                        {"keycode", each.keyCode},
                        {"submap", each.submap},
                        {"dispatcher", each.dispatcher},
                        {"arg", each.argument},
                        {"description", each.description},
                        {"catch_all", false},
                        {"mouse", false}});
    }
    return list.dump();
}

std::string FakeHyprland::clients() {
    ++windowReadings;
    json list = json::array();
    for (Window& each : windows) {
        if (each.pending > 0 && --each.pending == 0) {
            // The program has drawn: the window grows around its middle (clampWindowSize).
            resize(each, {std::max(each.box.size.width, each.smallest.width),
                          std::max(each.box.size.height, each.smallest.height)});
        }
        list.push_back({{"address", writtenAddress(each.address)},
                        {"mapped", true},
                        {"hidden", each.isHidden},
                        {"at", {std::trunc(each.box.origin.x), std::trunc(each.box.origin.y)}},
                        {"size", {std::trunc(each.box.size.width), std::trunc(each.box.size.height)}},
                        {"floating", each.isFloating},
                        {"class", each.appId},
                        {"title", each.title},
                        {"pid", each.process},
                        {"xwayland", each.isX11},
                        {"pinned", each.isPinned},
                        {"fullscreen", each.fullscreen},
                        {"stableId", writtenAddress(each.address).substr(2)}});
    }
    return list.dump();
}

int FakeHyprland::borderOf(const Window& each) const {
    const int own = each.isFloating ? each.floatingBorder : each.tiledBorder;
    return own < 0 ? border : own;
}

std::string FakeHyprland::property(const std::string& request) {
    static const std::regex expression("j/getprop address:0x([0-9a-f]+) (border_size|decorate)");
    std::smatch match;
    if (!std::regex_match(request, match, expression)) {
        return "prop not found";
    }
    const Window* found = find(std::stoull(match[1], nullptr, 16));
    if (found == nullptr) {
        return "window not found";
    }
    return match[2] == "decorate" ? R"({"decorate": true})"
                                  : R"({"border_size": )" + std::to_string(borderOf(*found)) + "}";
}

FakeHyprland::Window* FakeHyprland::find(std::uint64_t address) {
    const auto found = std::ranges::find(windows, address, &Window::address);
    return found == windows.end() ? nullptr : &*found;
}

std::string FakeHyprland::order(const std::string& request) {
    orders.push_back(request);
    if (reported) {
        reported(request);
    }
    const bool isLua = configuration != Configuration::hyprlang;
    if (request.starts_with("eval ")) {
        return isLua ? evaluate(request.substr(5)) : "eval is only supported with the lua config manager";
    }
    constexpr std::string_view batch = "[[BATCH]]";
    if (request.starts_with(batch)) {
        std::string answers;
        for (const std::string& each : parts(request.substr(batch.size()), std::regex(";"))) {
            answers += dispatch(each) + "\n\n\n";
        }
        return answers;
    }
    if (request.starts_with("dispatch ")) {
        return dispatch(request);
    }
    return request.starts_with("keyword ") ? bindOrder(request) : "unknown request";
}

std::string FakeHyprland::evaluate(const std::string& code) {
    if (code.starts_with("if ")) {
        return bindOrder(code);
    }
    static const std::regex call(
        R"re(hl\.dispatch\(hl\.dsp\.window\.(\w+)\(\{(.*?),window="address:0x([0-9a-f]+)"\}\)\))re");
    for (auto each = std::sregex_iterator(code.begin(), code.end(), call); each != std::sregex_iterator(); ++each) {
        carryOut(std::stoull((*each)[3], nullptr, 16), (*each)[1], (*each)[2]);
    }
    return "ok";
}

std::string FakeHyprland::dispatch(const std::string& words) {
    if (configuration != Configuration::hyprlang) {
        return "error: unexpected symbol\n\n → Note: dispatch in lua is a shorthand for hl.dispatch(...)";
    }
    static const std::regex expression("dispatch (\\w+) (?:(.*),)?address:0x([0-9a-f]+)");
    std::smatch match;
    if (words == "dispatch fullscreen 1") {
        if (Window* active = find(focused)) {
            active->fullscreen = active->fullscreen == 1 ? 0 : 1;
        }
    } else if (std::regex_match(words, match, expression)) {
        carryOut(std::stoull(match[3], nullptr, 16), match[1], match[2]);
    } else {
        return "Invalid dispatcher";
    }
    return "ok";
}

void FakeHyprland::carryOut(std::uint64_t address, const std::string& dispatcher, const std::string& arguments) {
    Window* found = find(address);
    if (found == nullptr) {
        return;
    }
    static const std::regex pair(R"((?:x=|exact )(-?\d+)(?:,y=| )(-?\d+)(,relative=false)?)");
    std::smatch match;
    const bool hasPair = std::regex_match(arguments, match, pair);
    if (dispatcher == "fullscreen" && arguments == R"(mode="maximized",action="unset")") {
        found->fullscreen = found->fullscreen == 1 ? 0 : found->fullscreen;
    } else if (found->fullscreen != 0) {
        // It refuses to change a window that fills its output.
    } else if ((dispatcher == "float" && arguments == R"(action="on")") || dispatcher == "setfloating") {
        found->isFloating = true;
    } else if (dispatcher == "pin") {
        found->isPinned = arguments.empty() ? !found->isPinned : true;
    } else if (dispatcher == "set_prop" && arguments.contains("border_size")) {
        found->floatingBorder = 0;
    } else if (!found->isFloating || !hasPair) {
        return;
    } else if (dispatcher == "resize" || dispatcher == "resizewindowpixel") {
        resize(*found, {std::stod(match[1]), std::stod(match[2])});
        found->pending = found->slowness;
    } else if (dispatcher == "move" || dispatcher == "movewindowpixel") {
        found->box.origin = {std::stod(match[1]), std::stod(match[2])};
    }
}

void FakeHyprland::resize(Window& each, corvid::CGSize size) {
    // Around the middle (CDefaultFloatingAlgorithm::resizeTarget).
    const double left = each.box.origin.x - ((size.width - each.box.size.width) / 2);
    const double top = each.box.origin.y - ((size.height - each.box.size.height) / 2);
    // Each edge is rounded, half a point away from zero.
    each.box.origin = {std::round(left), std::round(top)};
    each.box.size = {std::round(left + size.width) - each.box.origin.x,
                     std::round(top + size.height) - each.box.origin.y};
}

std::string FakeHyprland::bindOrder(const std::string& request) {
    static const std::regex old(R"((?:keyword (bind|unbind) )([A-Z ]*),code:(\d+)(?:,event,(.*))?)");
    static const std::regex removal(R"(^if (\w+) then \1:remove\(\) \1=nil end ?)");
    static const std::regex making(
        R"re((\w+)=hl\.bind\("([A-Z+ ]*)code:(\d+)",hl\.dsp\.event\("(.*)"\),\{description="(.*)"\}\))re");
    std::smatch match;
    if (std::regex_search(request, match, removal)) {
        const std::string name = match[1];
        std::erase_if(bindings, [&](const Bind& each) { return each.name == name; });
        const std::string rest = match.suffix();
        std::smatch made;
        if (std::regex_match(rest, made, making)) {
            bindings.push_back({.modifiers = modifiersIn(made[2]),
                                .keyCode = std::stoi(made[3]),
                                .dispatcher = "__lua",
                                .argument = "17",
                                .description = made[5],
                                .name = made[1]});
        }
        return "ok";
    }
    if (!std::regex_match(request, match, old)) {
        return "unknown request";
    }
    const int modifiers = modifiersIn(match[2]);
    const int keyCode = std::stoi(match[3]);
    if (match[1] == "bind") {
        bindings.push_back({.modifiers = modifiers, .keyCode = keyCode, .dispatcher = "event", .argument = match[4]});
    } else {
        // Of any maker, and in any mode.
        constexpr int left = 113;
        std::erase_if(bindings, [&](const Bind& each) {
            return each.modifiers == modifiers && (each.keyCode == keyCode || (keyCode == left && each.key == "left"));
        });
    }
    return "ok";
}
