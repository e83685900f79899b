#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Accessibility.h"

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace platform::compositor {

/// A compositor's message. No member is trusted to be there or to be of its type.
using Json = nlohmann::json;

/// No compositor has so much to say at once.
inline constexpr std::size_t longestJson = std::size_t{4} << 20U;

/// Nothing for what is not JSON, is longer than `longestJson` or nested deeper than any layout. Compositors hand on
/// titles and classes as their windows gave them: a byte in them that is not UTF-8 reads as U+FFFD, and what else is
/// said stays.
[[nodiscard]] std::optional<Json> parsedJson(std::string_view text);

/// A member of an object; null where there is none.
[[nodiscard]] const Json* member(const Json& object, const char* name);

/// A member that is a list; null where there is none.
[[nodiscard]] const Json* listIn(const Json& object, const char* name);

/// A member that is a text, valid as long as the object; one without data where there is none.
[[nodiscard]] std::string_view textOf(const Json& object, const char* name);

/// A member that is a text; empty where there is none, or one that is too long or holds a zero, as no name does.
[[nodiscard]] std::string nameOf(const Json& object, const char* name);

/// A member that is a boolean; false where there is none.
[[nodiscard]] bool isSet(const Json& object, const char* name);

/// A member that is a whole number; nothing where there is none.
[[nodiscard]] std::optional<std::int64_t> numberOf(const Json& object, const char* name);

/// A member that is the number of a process; zero where there is none.
[[nodiscard]] ProcessIdentifier processOf(const Json& object, const char* name);

/// A coordinate or a length; nothing for anything but a number, or one that is farther than any desktop reaches.
[[nodiscard]] std::optional<double> coordinate(const Json& value);

/// The rectangle whose four numbers (x, y, width, height) begin at an element of a list; nothing where there is none.
[[nodiscard]] std::optional<corvid::CGRect> rectangleIn(const Json& list, std::size_t first);

/// A member that is a rectangle: a list of those four numbers, or an object that has them as members. Nothing where
/// there is none.
[[nodiscard]] std::optional<corvid::CGRect> rectangleOf(const Json& object, const char* name);

} // namespace platform::compositor
