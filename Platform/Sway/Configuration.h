#pragma once

#include "Platform/Sway/Combination.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform::sway {

/// A file of the configuration.
struct ConfigurationFile {
    /// Absolute.
    std::string path;
    std::string text;
};

/// The files that a pattern in a file of that folder means, read.
using Includes = std::function<std::vector<ConfigurationFile>(const std::string& pattern, const std::string& folder)>;

/// A line that binds a combination.
struct ConfiguredBinding {
    /// The command that the combination runs.
    std::string command;
    /// The whole line with its variables replaced, and with the block's beginning before it: what would bind it again.
    std::string definition;
    /// Where the line begins, counted from one.
    std::string path;
    std::size_t line = 0;

    friend bool operator==(const ConfiguredBinding&, const ConfiguredBinding&) = default;
};

using ConfiguredBindings = std::map<Combination, ConfiguredBinding>;

/// The combinations that a configuration binds as long as no other mode is entered (sway(5): "bindsym", "bindcode",
/// "set", "include", "mode"). Reads not the whole language, but the lines that have a part in this; where it is in
/// doubt, a combination counts as bound. Takes no more than a moment for any text.
[[nodiscard]] ConfiguredBindings configuredBindings(const ConfigurationFile& main, const Includes& includes);

/// The binding of the same keys held down; null where there is none.
[[nodiscard]] const ConfiguredBinding* bindingOf(const ConfiguredBindings& bindings,
                                                 const HotKeyCombination& combination);

/// Reads from the disk what a pattern means: folders, wildcards, the home directory and the environment; commands are
/// not carried out.
[[nodiscard]] std::vector<ConfigurationFile> includedFiles(const std::string& pattern, const std::string& folder);

} // namespace platform::sway
