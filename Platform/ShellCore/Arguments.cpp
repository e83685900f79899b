#include "Platform/ShellCore/Arguments.h"

namespace platform::shellcore {

std::string_view textOf(sd_bus_message* message) {
    const char* text = nullptr;
    return sd_bus_message_read(message, "s", &text) > 0 ? std::string_view(text) : std::string_view();
}

std::optional<corvid::CGRect> rectangleOf(sd_bus_message* message) {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (sd_bus_message_read(message, "iiii", &x, &y, &width, &height) <= 0) {
        return std::nullopt;
    }
    return corvid::CGRect{{static_cast<double>(x), static_cast<double>(y)},
                          {static_cast<double>(width), static_cast<double>(height)}};
}

std::optional<std::uint64_t> windowOf(sd_bus_message* message) {
    std::uint64_t window = 0;
    return sd_bus_message_read(message, "t", &window) > 0 ? std::optional(window) : std::nullopt;
}

} // namespace platform::shellcore
