#include "CorvidKit/LocalizedComparison.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <cwctype>
#include <optional>
#include <string>

namespace corvid {

namespace {

/// The text in the process's encoding as case-folded wide characters; empty if it is not in that encoding.
std::optional<std::wstring> folded(std::string_view text) {
    const std::string terminated(text.substr(0, text.find('\0')));
    const char* source = terminated.c_str();
    std::mbstate_t state{};
    std::wstring wide(terminated.size(), L'\0');
    const std::size_t length = std::mbsrtowcs(wide.data(), &source, wide.size(), &state);
    if (length == static_cast<std::size_t>(-1)) {
        return std::nullopt;
    }
    wide.resize(length);
    // Upper case first: letters such as the long s share the upper case of another and no lower case.
    std::ranges::transform(wide, wide.begin(), [](wchar_t character) {
        return static_cast<wchar_t>(std::towlower(std::towupper(static_cast<std::wint_t>(character))));
    });
    return wide;
}

} // namespace

bool goesBefore(std::string_view first, std::string_view second) {
    const auto foldedFirst = folded(first);
    const auto foldedSecond = folded(second);
    if (!foldedFirst || !foldedSecond) {
        // A text that can be read goes before one that cannot, so that the order stays one.
        return foldedFirst.has_value() != foldedSecond.has_value() ? foldedFirst.has_value() : first < second;
    }
    return std::wcscoll(foldedFirst->c_str(), foldedSecond->c_str()) < 0;
}

} // namespace corvid
