#pragma once

#include "Platform/Linux/Holders/SettingsHolders.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"
#include "Platform/ShellCore/ShellLink.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace platform::shellcore {

/// Asks the shell through our core for the holder of a combination: the shell knows the bindings in force. Keys
/// that it holds for others, such as the settings daemon, are searched in the settings, and so is every key if the
/// core cannot answer. Main thread only.
class ShellHolders final : public ShortcutHolders {
public:
    /// A later reply is discarded.
    static constexpr std::chrono::seconds patience{5};

    /// A shell's common name, and the family of its settings.
    struct Shell {
        std::string name;
        const linux::SettingsFamily& settings;
    };

    /// Loop and link must outlive this.
    ShellHolders(linux::MainLoop& mainLoop, ShellLink& link, Shell shell)
        : mainLoop(mainLoop)
        , link(link)
        , shell(std::move(shell))
        , settings(mainLoop, this->shell.name, this->shell.settings) {}

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

    /// The core's replies for combinations, and the indexes of those that must be searched elsewhere.
    struct Said {
        Answers answers;
        std::vector<std::size_t> unknown;
    };

    /// Reads the core's reply: an array with null, or an object with the texts "binding" and "summary" and the
    /// list "keys" of all keys of the binding, for each. For any other reply all are unknown.
    [[nodiscard]] static Said read(std::string_view json, const std::vector<corvid::Shortcut>& shortcuts,
                                   const Shell& shell);

private:
    class Search;

    linux::MainLoop& mainLoop;
    ShellLink& link;
    Shell shell;
    linux::SettingsHolders settings;
};

} // namespace platform::shellcore
