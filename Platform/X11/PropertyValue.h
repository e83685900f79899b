#pragma once

#include "Platform/X11/Connection.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace platform::x11 {

/// Any program may write a property of any length on any window. In 32-bit units.
inline constexpr std::uint32_t longestProperty = 1024;

/// Requests a property, whatever its type, as far as `maximumLength` 32-bit units. Send first, read later.
[[nodiscard]] xcb_get_property_cookie_t requestProperty(Connection& connection, xcb_window_t window,
                                                        xcb_atom_t property,
                                                        std::uint32_t maximumLength = longestProperty);

/// The values of a property in 32-bit format: cardinals, atoms and windows. Empty where the property is absent, of
/// another format, or did not come in time: other programs write these, so nothing about them is taken for granted.
[[nodiscard]] std::vector<std::uint32_t> readWords(Connection& connection, xcb_get_property_cookie_t cookie);

/// The same, where an absent property and an empty one differ.
[[nodiscard]] std::optional<std::vector<std::uint32_t>> readOptionalWords(Connection& connection,
                                                                          xcb_get_property_cookie_t cookie);

/// The bytes of a property in 8-bit format; empty as above.
[[nodiscard]] std::string readText(Connection& connection, xcb_get_property_cookie_t cookie);

} // namespace platform::x11
