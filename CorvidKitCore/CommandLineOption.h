#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Options of the form "--option value" on a command line.
namespace corvid::CommandLineOption {

/// The argument right after the first one equal to the option, with any value. Empty if the option is missing or is the
/// last argument. The program's path is an argument like the others.
[[nodiscard]] std::optional<std::string> value(std::string_view option, std::span<const std::string> arguments);

} // namespace corvid::CommandLineOption
