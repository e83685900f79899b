#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace platform::sway {

/// What the compositor says, in which nothing is trusted to be there or to be of its type.
using Json = nlohmann::json;

/// Nothing for what is not JSON. Whatever is nested deeper than any layout is left out.
[[nodiscard]] std::optional<Json> parsedJson(std::string_view text);

/// A member of an object; null where there is none.
[[nodiscard]] const Json* member(const Json& object, const char* name);

/// Empty where there is no such text.
[[nodiscard]] std::string_view textOf(const Json& object, const char* name);

/// Nothing where there is no such whole number.
[[nodiscard]] std::optional<std::int64_t> numberOf(const Json& object, const char* name);

/// No where there is no such boolean.
[[nodiscard]] bool isSet(const Json& object, const char* name);

} // namespace platform::sway
