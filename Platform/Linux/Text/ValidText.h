#pragma once

#include <string>
#include <string_view>

namespace platform::linux {

/// The text with U+FFFD in the place of each byte that is not UTF-8. Any thread.
[[nodiscard]] std::string validText(std::string_view text);

} // namespace platform::linux
