#pragma once

#include <optional>
#include <string>

namespace platform::linux {

/// The user's home folder: `$HOME`, or the one in the password database when that is unset or not absolute. Nothing
/// when there is none at all. Reads the environment: main thread.
[[nodiscard]] std::optional<std::string> homeFolder();

/// The folder that holds the user's configuration files: `$XDG_CONFIG_HOME`, or `.config` in the home folder when that
/// is unset, empty or not an absolute path (XDG Base Directory Specification 0.8). Nothing when there is no home
/// folder. Reads the environment: main thread.
[[nodiscard]] std::optional<std::string> configurationFolder();

} // namespace platform::linux
