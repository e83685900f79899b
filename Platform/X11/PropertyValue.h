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

/// Requests at most `maximumLength` 32-bit units of a property of any type. Send first, read later.
[[nodiscard]] xcb_get_property_cookie_t requestProperty(Connection& connection, xcb_window_t window,
                                                        xcb_atom_t property,
                                                        std::uint32_t maximumLength = longestProperty);

/// The values of a property in 32-bit format: cardinals, atoms and windows. Empty if the property is absent, of another
/// format, or did not come in time. Other programs write these properties, so they are not trusted.
[[nodiscard]] std::vector<std::uint32_t> readWords(Connection& connection, xcb_get_property_cookie_t cookie);

/// The same, but distinguishes an absent property from an empty one.
[[nodiscard]] std::optional<std::vector<std::uint32_t>> readOptionalWords(Connection& connection,
                                                                          xcb_get_property_cookie_t cookie);

/// The bytes of a property in 8-bit format; empty as above.
[[nodiscard]] std::string readText(Connection& connection, xcb_get_property_cookie_t cookie);

} // namespace platform::x11
