#include "Platform/I3/Layout.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace {

bool hasSize(const std::optional<corvid::CGRect>& area) {
    return area && area->size.width > 0 && area->size.height > 0;
}

} // namespace

/// Treats the bytes as a layout: every window read from it has a position and a size.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes are characters.
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const auto json = platform::i3ipc::parsedJson(text);
    const auto layout = json ? platform::i3::readLayout(*json) : std::nullopt;
    if (!layout) {
        return 0;
    }
    for (const auto& [window, place] : layout->windows) {
        if (window == 0 || !hasSize(place.frame) || !hasSize(place.drawn)) {
            std::abort();
        }
    }
    for (const corvid::CGRect& area : layout->workAreas) {
        if (!hasSize(area)) {
            std::abort();
        }
    }
    return 0;
}
