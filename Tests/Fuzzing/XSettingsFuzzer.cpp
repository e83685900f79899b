#include "Platform/X11/XSettingsFormat.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <variant>

/// Treats the bytes as the property of a settings manager: all settings together are no longer than the property.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    std::size_t length = 0;
    for (const auto& [name, value] : platform::x11::readXSettings(std::as_bytes(std::span(bytes, size)))) {
        const auto* text = std::get_if<std::string>(&value);
        length += name.size() + (text == nullptr ? sizeof(std::int32_t) : text->size());
    }
    if (length > size) {
        std::abort();
    }
    return 0;
}
