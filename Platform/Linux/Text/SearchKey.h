#pragma once

#include <string>
#include <string_view>

namespace platform::linux {

/// A text in the form that searches compare: without letter case, accents and other marks that people may leave out
/// (Unicode Standard, section 5.18, "Case Mappings", and annex 15, "Normalization Forms"). Invalid UTF-8 becomes the
/// replacement character. Any thread.
[[nodiscard]] std::string searchKey(std::string_view text);

} // namespace platform::linux
