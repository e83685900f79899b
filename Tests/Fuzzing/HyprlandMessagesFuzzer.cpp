#include "Platform/Hyprland/Binds.h"
#include "Platform/Hyprland/Layout.h"
#include "Platform/Hyprland/Words.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

bool isSound(const corvid::CGRect& frame) {
    return std::isfinite(frame.origin.x) && std::isfinite(frame.origin.y) && frame.size.width >= 0 &&
           frame.size.height >= 0;
}

bool isWithin(const corvid::CGRect& inner, const corvid::CGRect& outer) {
    constexpr double rounding = 1e-3;
    return inner.minX() >= outer.minX() - rounding && inner.minY() >= outer.minY() - rounding &&
           inner.maxX() <= outer.maxX() + rounding && inner.maxY() <= outer.maxY() + rounding;
}

} // namespace

/// Treats the bytes as an answer of the compositor: every window has an address that may be part of a request, and
/// every output has room for windows within it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    namespace hyprland = platform::hyprland;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are characters.
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    static_cast<void>(hyprland::languageIn(text));
    static_cast<void>(hyprland::pressedNumber(text));
    const auto json = platform::compositor::parsedJson(text);
    if (!json) {
        return 0;
    }
    if (const auto clients = hyprland::readClients(*json)) {
        for (const hyprland::Client& each : *clients) {
            require(hyprland::isAddress(each.identifier) && isSound(each.window.frame));
        }
    }
    if (const auto outputs = hyprland::readMonitors(*json)) {
        for (const platform::compositor::Output& each : *outputs) {
            require(isSound(each.frame) && isSound(each.workArea));
            require(isWithin(each.workArea, each.frame));
        }
    }
    static_cast<void>(hyprland::readBinds(*json));
    return 0;
}
