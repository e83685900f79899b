#pragma once

#include "Platform/Sway/Combination.h"

#include <functional>
#include <set>
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

/// The combinations that a configuration binds as long as no other mode is entered (sway(5): "bindsym", "bindcode",
/// "set", "include", "mode"). Not a reader of the language, but of the lines that have a part in this; where it is in
/// doubt, a combination counts as bound. Whatever the text, it takes no more than a moment.
[[nodiscard]] std::set<Combination> boundCombinations(const ConfigurationFile& main, const Includes& includes);

/// Reads from the disk what a pattern means: folders, wildcards, the home directory and the environment; commands are
/// not carried out.
[[nodiscard]] std::vector<ConfigurationFile> includedFiles(const std::string& pattern, const std::string& folder);

} // namespace platform::sway
