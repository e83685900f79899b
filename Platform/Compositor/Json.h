#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Seam/Desktop/Accessibility.h"

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace platform::compositor {

/// A compositor's message. Any member may be missing or have another type.
using Json = nlohmann::json;

/// Larger than any compositor's message.
inline constexpr std::size_t longestJson = std::size_t{4} << 20U;

/// Empty for a text that is not JSON, is longer than `longestJson` or nested deeper than any layout. Compositors pass
/// on titles and classes as their windows set them: a byte in them that is not UTF-8 reads as U+FFFD, and the rest of
/// the message stays.
[[nodiscard]] std::optional<Json> parsedJson(std::string_view text);

/// A member of an object; null without one.
[[nodiscard]] const Json* member(const Json& object, const char* name);

/// A member that is a list; null without one.
[[nodiscard]] const Json* listIn(const Json& object, const char* name);

/// A member that is a text, valid as long as the object; one without data if it is missing.
[[nodiscard]] std::string_view textOf(const Json& object, const char* name);

/// A member that is a text; empty if it is missing, or if it is too long or contains a zero, as no name does.
[[nodiscard]] std::string nameOf(const Json& object, const char* name);

/// A member that is a boolean; false if it is missing.
[[nodiscard]] bool isSet(const Json& object, const char* name);

/// A member that is a whole number; empty if it is missing.
[[nodiscard]] std::optional<std::int64_t> numberOf(const Json& object, const char* name);

/// A member that is a process id; zero if it is missing.
[[nodiscard]] ProcessIdentifier processOf(const Json& object, const char* name);

/// A coordinate or a length; empty for anything but a number, or for one beyond the size of any desktop.
[[nodiscard]] std::optional<double> coordinate(const Json& value);

/// The point of an object that has its coordinates as members (x, y); empty without them.
[[nodiscard]] std::optional<corvid::CGPoint> pointOf(const Json& object);

/// The rectangle whose four numbers (x, y, width, height) begin at an element of a list; empty without one.
[[nodiscard]] std::optional<corvid::CGRect> rectangleIn(const Json& list, std::size_t first);

/// A member that is a rectangle: a list of those four numbers, or an object that has them as members. Empty if it is
/// missing.
[[nodiscard]] std::optional<corvid::CGRect> rectangleOf(const Json& object, const char* name);

} // namespace platform::compositor
