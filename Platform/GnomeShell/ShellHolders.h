#pragma once

#include "Platform/GnomeShell/ShellLink.h"
#include "Platform/Linux/Holders/SettingsHolders.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/ShortcutHolders.h"

#include <chrono>
#include <cstddef>
#include <string_view>

namespace platform::gnomeshell {

/// Asks the shell through the extension whose a combination is: it knows what is in force. What it keeps for others, as
/// for the settings daemon, and everything where the extension cannot say, is looked for in the settings. Main thread
/// only.
class ShellHolders final : public ShortcutHolders {
public:
    /// An answer that takes longer does not come.
    static constexpr std::chrono::seconds patience{5};

    /// Both have to outlive this.
    ShellHolders(linux::MainLoop& mainLoop, ShellLink& link)
        : mainLoop(mainLoop)
        , link(link)
        , settings(mainLoop, "GNOME", linux::settings::gnome) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

    /// The extension's answers for combinations, and the places of those that are to be looked for elsewhere.
    struct Said {
        Answers answers;
        std::vector<std::size_t> unknown;
    };

    /// Reads the extension's answer: an array with null, or an object with the texts "binding" and "summary" and the
    /// list "keys" of all that the binding has, for each. Of anything else all are unknown.
    [[nodiscard]] static Said read(std::string_view json, const std::vector<corvid::Shortcut>& shortcuts);

private:
    class Search;

    linux::MainLoop& mainLoop;
    ShellLink& link;
    linux::SettingsHolders settings;
};

} // namespace platform::gnomeshell
