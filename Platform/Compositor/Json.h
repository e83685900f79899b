#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace platform::compositor {

/// A compositor's message. No member is trusted to be there or to be of its type.
using Json = nlohmann::json;

/// Nothing for what is not JSON, or is nested deeper than any layout. Compositors hand on titles and classes as their
/// windows gave them: a byte in them that is not UTF-8 reads as U+FFFD, and what else is said stays.
[[nodiscard]] std::optional<Json> parsedJson(std::string_view text);

/// A member of an object; null where there is none.
[[nodiscard]] const Json* member(const Json& object, const char* name);

/// A member that is a text; empty where there is none.
[[nodiscard]] std::string textIn(const Json& object, const char* name);

} // namespace platform::compositor
