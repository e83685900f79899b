#pragma once

#include "Platform/GnomeShell/ShellLink.h"
#include "Platform/Linux/Holders/SettingsHolders.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <chrono>
#include <cstddef>
#include <string_view>

namespace platform::gnomeshell {

/// Asks the shell through the extension for the holder of a combination: the shell knows the bindings in force. Keys
/// that it holds for others, such as the settings daemon, are searched in the settings, and so is every key if the
/// extension cannot answer. Main thread only.
class ShellHolders final : public ShortcutHolders {
public:
    /// A later reply is discarded.
    static constexpr std::chrono::seconds patience{5};

    /// Both must outlive this.
    ShellHolders(linux::MainLoop& mainLoop, ShellLink& link)
        : mainLoop(mainLoop)
        , link(link)
        , settings(mainLoop, "GNOME", linux::settings::gnome) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

    /// The extension's replies for combinations, and the indexes of those that must be searched elsewhere.
    struct Said {
        Answers answers;
        std::vector<std::size_t> unknown;
    };

    /// Reads the extension's reply: an array with null, or an object with the texts "binding" and "summary" and the
    /// list "keys" of all keys of the binding, for each. For any other reply all are unknown.
    [[nodiscard]] static Said read(std::string_view json, const std::vector<corvid::Shortcut>& shortcuts);

private:
    class Search;

    linux::MainLoop& mainLoop;
    ShellLink& link;
    linux::SettingsHolders settings;
};

} // namespace platform::gnomeshell
