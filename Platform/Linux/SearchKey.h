#pragma once

#include <string>
#include <string_view>

namespace platform::linux {

/// A text as it is compared when people search: without letter case, accents and what else they may leave out (Unicode
/// Standard, section 5.18, "Case Mappings", and annex 15, "Normalization Forms"). What is not UTF-8 becomes the
/// replacement character. Any thread.
[[nodiscard]] std::string searchKey(std::string_view text);

} // namespace platform::linux
