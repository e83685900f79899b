#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <variant>

namespace platform::x11 {

/// The settings that a desktop shares with its clients, by name. Colors are left out, because this program uses none.
using XSettings = std::map<std::string, std::variant<std::int32_t, std::string>, std::less<>>;

/// Reads the contents of the property `_XSETTINGS_SETTINGS` (XSETTINGS, `_XSETTINGS_SETTINGS` Format), in either byte
/// order. Another program writes it: all settings before the first malformed one count.
[[nodiscard]] XSettings readXSettings(std::span<const std::byte> property);

} // namespace platform::x11
