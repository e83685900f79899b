#pragma once

#include "Platform/Compositor/Json.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform::sway {

using compositor::Json;
using compositor::member;
using compositor::parsedJson;

/// Empty where there is no such text.
[[nodiscard]] std::string_view textOf(const Json& object, const char* name);

/// Nothing where there is no such whole number.
[[nodiscard]] std::optional<std::int64_t> numberOf(const Json& object, const char* name);

/// No where there is no such boolean.
[[nodiscard]] bool isSet(const Json& object, const char* name);

} // namespace platform::sway
