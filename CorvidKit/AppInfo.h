#pragma once

#include "CorvidKit/Logger.h"

#include <optional>
#include <string>

/// Facts about this program, from its bundle.
namespace corvid::AppInfo {

/// The version for people; "dev" where the bundle has none.
[[nodiscard]] std::string version();

/// The name under which the program is installed, if the bundle has one.
[[nodiscard]] std::optional<std::string> identifier();

/// Writes to the system's log for one area of the program.
[[nodiscard]] Logger logger(std::string category);

} // namespace corvid::AppInfo
