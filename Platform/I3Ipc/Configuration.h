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

/// The files that a pattern in a file of that folder means, read.
using Includes = std::function<std::vector<ConfigurationFile>(const std::string& pattern, const std::string& folder)>;

/// The keys of a line and the options that make it another binding than the others of these keys.
struct BindingKey {
    Combination combination;
    bool isOnRelease = false;
    /// Also while the screen is locked.
    bool isWhileLocked = false;
    /// Also while a program has asked for all keys.
    bool isWhileInhibited = false;
    /// The symbol stands for the place that it has when the line is read.
    bool isByPlace = false;
    /// The only keyboard that it is for; empty for all.
    std::string device;

    friend auto operator<=>(const BindingKey&, const BindingKey&) = default;
};

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

using ConfiguredBindings = std::map<BindingKey, ConfiguredBinding>;

/// The combinations that a configuration binds as long as no other mode is entered (sway(5): "bindsym", "bindcode",
/// "set", "include", "mode"). Reads not the whole language, but the lines that have a part in this; where it is in
/// doubt, a combination counts as bound. Takes no more than a moment for any text.
[[nodiscard]] ConfiguredBindings configuredBindings(const ConfigurationFile& main, const Includes& includes);

/// The lines of a configuration that use the keys of a hot key; they live as long as the configuration.
struct KeyUse {
    /// One of them; null where there is none.
    const ConfiguredBinding* line = nullptr;
    /// One that is for one keyboard or for one layout alone, and so comes before those for all; null where there is
    /// none.
    const ConfiguredBinding* particular = nullptr;
    /// Whether one of them waits until the keys are let go.
    bool isOnRelease = false;
};

[[nodiscard]] KeyUse useOf(const ConfiguredBindings& bindings, const HotKeyCombination& combination);

/// The binding of the same keys held down; null where there is none.
[[nodiscard]] const ConfiguredBinding* bindingOf(const ConfiguredBindings& bindings,
                                                 const HotKeyCombination& combination);

/// Reads from the disk what a pattern means: folders, wildcards, the home directory and the environment; commands are
/// not carried out.
[[nodiscard]] std::vector<ConfigurationFile> includedFiles(const std::string& pattern, const std::string& folder);

} // namespace platform::i3ipc
