#include "Platform/Hyprland/Words.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace platform::hyprland {

namespace {

/// Coordinates far beyond any screen would not be understood.
std::string number(double value) {
    constexpr double farthest = 1 << 20;
    return std::to_string(std::lround(std::isfinite(value) ? std::clamp(value, -farthest, farthest) : 0));
}

std::string length(double value) {
    return number(std::max(1.0, value));
}

/// A dispatcher of Lua with its arguments (Hyprland 0.57, src/config/lua/bindings/LuaBindingsDispatchers.cpp).
std::string luaCall(std::string_view dispatcher, std::string_view arguments, std::string_view address) {
    return "hl.dispatch(hl.dsp.window." + std::string(dispatcher) + "({" + std::string(arguments) +
           ",window=\"address:" + std::string(address) + "\"}))";
}

std::string luaPlace(std::string_view dispatcher, const std::string& x, const std::string& y,
                     std::string_view address) {
    return luaCall(dispatcher, "x=" + x + ",y=" + y + ",relative=false", address);
}

/// A dispatcher of hyprlang whose last argument is the window.
std::string call(std::string_view dispatcher, std::string_view arguments, std::string_view address) {
    const std::string words = "dispatch " + std::string(dispatcher) + " " + std::string(arguments);
    return words + (arguments.empty() ? "" : ",") + "address:" + std::string(address);
}

std::string evaluation(std::initializer_list<std::string> calls) {
    std::string request = "eval";
    for (const std::string& each : calls) {
        request += each.empty() ? "" : " " + each;
    }
    return request;
}

std::string batch(std::initializer_list<std::string> calls) {
    std::string request;
    for (const std::string& each : calls) {
        request += each.empty() ? "" : (request.empty() ? "[[BATCH]]" : ";") + each;
    }
    return request;
}

} // namespace

Language languageIn(std::string_view status) {
    const std::size_t place = status.find("configProvider");
    return place != std::string_view::npos && status.substr(place).contains("lua") ? Language::lua : Language::hyprlang;
}

bool refusesLanguage(std::string_view answer, Language language) {
    // With Lua a dispatcher of hyprlang is a faulty expression; 0.57 with its old configuration has no dispatchers, and
    // before 0.55 there is no "eval".
    return language == Language::lua
               ? answer.contains("only supported with the lua") || answer.starts_with("unknown request")
               : answer.contains("hl.dispatch") || answer.contains("doesn't support dispatch");
}

bool isAddress(std::string_view text) {
    constexpr std::string_view prefix = "0x";
    constexpr std::size_t longest = 18;
    return text.starts_with(prefix) && text.size() > prefix.size() && text.size() <= longest &&
           std::ranges::all_of(text.substr(prefix.size()), [](char character) {
               return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f');
           });
}

std::string placingRequest(Language language, std::string_view address, const Release& release,
                           const corvid::CGRect& box) {
    const std::string width = length(box.size.width);
    const std::string height = length(box.size.height);
    const std::string x = number(box.origin.x);
    const std::string y = number(box.origin.y);
    // Hyprland sizes a window around its middle, and rounds each edge to a whole point, away from zero (measured with
    // 0.57). A window that lies across zero meanwhile becomes a point larger. So it is sized beyond zero.
    const std::string besideX = number(std::max(0.0, box.origin.x) + box.size.width);
    const std::string besideY = number(std::max(0.0, box.origin.y) + box.size.height);
    if (language == Language::lua) {
        return evaluation({
            release.isMaximized ? luaCall("fullscreen", R"(mode="maximized",action="unset")", address) : "",
            release.isTiled ? luaCall("float", R"(action="on")", address) : "",
            luaPlace("move", besideX, besideY, address),
            luaPlace("resize", width, height, address),
            luaPlace("move", x, y, address),
        });
    }
    return batch({
        release.isMaximized ? "dispatch fullscreen 1" : "",
        release.isTiled ? call("setfloating", "", address) : "",
        call("movewindowpixel", "exact " + besideX + " " + besideY, address),
        call("resizewindowpixel", "exact " + width + " " + height, address),
        call("movewindowpixel", "exact " + x + " " + y, address),
    });
}

std::string popoverRequest(Language language, std::string_view address, bool isPinned, corvid::CGPoint topLeft) {
    const std::string x = number(topLeft.x);
    const std::string y = number(topLeft.y);
    if (language == Language::lua) {
        return evaluation({
            luaCall("set_prop", R"(prop="no_anim",value="1")", address),
            luaCall("set_prop", R"(prop="border_size",value="0")", address),
            luaCall("float", R"(action="on")", address),
            luaCall("pin", R"(action="on")", address),
            luaPlace("move", x, y, address),
        });
    }
    return batch({
        call("setfloating", "", address),
        // Here it is a switch.
        isPinned ? "" : call("pin", "", address),
        call("movewindowpixel", "exact " + x + " " + y, address),
    });
}

} // namespace platform::hyprland
