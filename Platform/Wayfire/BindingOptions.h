#pragma once

#include "Platform/Seam/Desktop/ShortcutHolders.h"
#include "Platform/Wayfire/KeyPress.h"
#include "Platform/Wayfire/Message.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::wayfire {

/// An option of a plugin that binds keys.
struct BindingOption {
    /// The plugin, which is the section in `wayfire.ini`.
    std::string section;
    /// The name in the section; of a list, only of the list.
    std::string name;
    /// The beginning of a list's lines that bind a key: "binding_". Empty for a single option.
    std::string prefix;
    /// The plugin's words for itself and for the option, in English: "Viewport Switcher: Left".
    std::string title;

    /// As requests name it: "vswitch/binding_left".
    [[nodiscard]] std::string path() const { return section + "/" + name; }

    friend bool operator==(const BindingOption&, const BindingOption&) = default;
};

/// The options in a plugin's description (Wayfire 0.10, metadata/*.xml: elements "option" of the types "activator",
/// "key" and "dynamic-list"). None if the text is no such description.
[[nodiscard]] std::vector<BindingOption> readMetadata(std::string_view xml);

/// Gives the texts of all descriptions below some folders; a test has texts of its own.
using MetadataTexts = std::function<std::vector<std::string>(const std::string& folder)>;

/// The descriptions in Wayfire's own folder, and in those that the user adds (`WAYFIRE_PLUGIN_XML_PATH`, and below
/// `XDG_DATA_HOME`). Reads the environment: main thread.
[[nodiscard]] std::vector<std::string> metadataTexts(const std::string& folder);

/// A combination that an option binds.
struct ConfiguredKey {
    KeyPress keys;
    ShortcutHolder holder;

    friend bool operator==(const ConfiguredKey&, const ConfiguredKey&) = default;
};

/// The keys in an answer to "wayfire/get-config-option": a text with alternatives or, for a list, the name, the words
/// and the bindings of each entry.
[[nodiscard]] std::vector<ConfiguredKey> configuredKeys(const BindingOption& option, const Json& answer);

} // namespace platform::wayfire
