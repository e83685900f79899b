#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Options of the form "--option value" on a command line.
namespace corvid::CommandLineOption {

/// The argument right after the first one equal to the option, whatever it is. Nothing when the option is not there or
/// has nothing after it. The program's path is an argument like the others.
[[nodiscard]] std::optional<std::string> value(std::string_view option, std::span<const std::string> arguments);

} // namespace corvid::CommandLineOption
