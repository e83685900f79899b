#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The application's name in the list of rules.
namespace tessel::AppName {

/// The application's file name without a final ".app" (letter case counts); the bundle identifier when the file name
/// is missing or empty.
[[nodiscard]] std::string display(std::optional<std::string_view> fileName, std::string_view bundleID);

} // namespace tessel::AppName
