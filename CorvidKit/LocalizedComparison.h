#pragma once

#include <string_view>

namespace corvid {

/// Whether `first` goes before `second` in the user's language, letter case aside: by the C library's collation for the
/// process's locale (`LC_COLLATE` and `LC_CTYPE`, which the program sets at start), over case-folded text. Names that
/// compare equal go before neither. A text that is not in the locale's encoding compares byte by byte.
[[nodiscard]] bool goesBefore(std::string_view first, std::string_view second);

} // namespace corvid
