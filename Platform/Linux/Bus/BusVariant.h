#pragma once

#include <systemd/sd-bus.h>

#include <optional>
#include <string_view>

namespace platform::linux {

/// Reads a variant that holds a value of that basic type, or steps over one that holds something else: what others
/// write may be anything. A Boolean is an `int`.
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
