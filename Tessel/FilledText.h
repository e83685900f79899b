#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tessel {

/// The text with its placeholders replaced by the values: "%1" by the first one, "%2" by the second, and so on, and
/// each "%lld" by the next one in turn. A placeholder without a value stays; values are not searched for placeholders.
[[nodiscard]] std::string filled(std::string_view text, std::span<const std::string> values);

} // namespace tessel
