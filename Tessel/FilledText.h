#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tessel {

/// The text with the values in the places that it has for them: "%1" is the first one, "%2" the second, and so on, and
/// each "%lld" the next one in turn. A place without a value stays as it is; a value is not searched for places.
[[nodiscard]] std::string filled(std::string_view text, std::span<const std::string> values);

} // namespace tessel
