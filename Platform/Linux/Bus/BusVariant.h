#pragma once

#include <systemd/sd-bus.h>

#include <optional>
#include <string_view>

namespace platform::linux {

/// Reads a variant that holds a value of that basic type, or skips one of another type, because other programs may send
/// any value. A Boolean is an `int`.
template <typename Value>
std::optional<Value> readVariant(sd_bus_message* message, const char* type) {
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(message, nullptr, &contents) <= 0 || contents == nullptr ||
        std::string_view{contents} != type) {
        sd_bus_message_skip(message, "v");
        return std::nullopt;
    }
    Value value{};
    return sd_bus_message_read(message, "v", type, &value) > 0 ? std::optional(value) : std::nullopt;
}

} // namespace platform::linux
