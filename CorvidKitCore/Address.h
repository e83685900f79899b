#pragma once

#include <string_view>

namespace corvid {

/// Whether a text can be the address of something: a scheme, a colon and something after it, out of the characters that
/// addresses are made of (RFC 3986, sections 2 and 3.1), each percent sign before two hexadecimal digits. Not
/// `g_uri_is_valid`, which takes spaces, quotation marks and line ends as well.
[[nodiscard]] bool isAddress(std::string_view text);

} // namespace corvid
