#pragma once

#include "Platform/I3Ipc/Combination.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform::i3ipc {

/// A file of the configuration.
struct ConfigurationFile {
    /// Absolute.
    std::string path;
    std::string text;
};

/// Reads the files that a pattern in a file of that folder matches.
using Includes = std::function<std::vector<ConfigurationFile>(const std::string& pattern, const std::string& folder)>;

/// The keys of a line, and the options that distinguish it from other bindings of these keys.
struct BindingKey {
    Combination combination;
    bool isOnRelease = false;
    /// Also while the screen is locked.
    bool isWhileLocked = false;
    /// Also while a program has requested all keys.
    bool isWhileInhibited = false;
    /// The symbol stands for the key that has it when the line is read.
    bool isByPlace = false;
    /// Its only keyboard; empty for all.
    std::string device;

    friend auto operator<=>(const BindingKey&, const BindingKey&) = default;
};

/// A line that binds a combination.
struct ConfiguredBinding {
    /// The command of the binding.
    std::string command;
    /// The whole line with its variables replaced, and with the block's beginning before it: a line that binds it
    /// again.
    std::string definition;
    /// The number of its first line, counted from one.
    std::string path;
    std::size_t line = 0;

    friend bool operator==(const ConfiguredBinding&, const ConfiguredBinding&) = default;
};

using ConfiguredBindings = std::map<BindingKey, ConfiguredBinding>;

/// The combinations that a configuration binds in the default mode (sway(5): "bindsym", "bindcode", "set", "include",
/// "mode"). It does not parse the whole language, but the lines that matter here; if in doubt, a combination counts as
/// bound. Takes no more than a moment for any text.
[[nodiscard]] ConfiguredBindings configuredBindings(const ConfigurationFile& main, const Includes& includes);

/// The lines of a configuration that use the keys of a hot key; valid as long as the configuration.
struct KeyUse {
    /// One of them; null without any.
    const ConfiguredBinding* line = nullptr;
    /// One that is for one keyboard or for one layout alone, and so takes precedence over those for all; null without
    /// any.
    const ConfiguredBinding* particular = nullptr;
    /// Whether one of them acts at the release of the keys.
    bool isOnRelease = false;
};

[[nodiscard]] KeyUse useOf(const ConfiguredBindings& bindings, const HotKeyCombination& combination);

/// The binding of the same keys held down; null without one.
[[nodiscard]] const ConfiguredBinding* bindingOf(const ConfiguredBindings& bindings,
                                                 const HotKeyCombination& combination);

/// Reads the files of a pattern from the disk: folders, wildcards, the home directory and the environment; commands are
/// not run.
[[nodiscard]] std::vector<ConfigurationFile> includedFiles(const std::string& pattern, const std::string& folder);

} // namespace platform::i3ipc
