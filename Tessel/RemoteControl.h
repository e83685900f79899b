#pragma once

#include "Platform/ControlRequests.h"
#include "Platform/Localization.h"
#include "Platform/ThisApplication.h"
#include "Tessel/AppState.h"

#include <functional>
#include <string>

namespace tessel {

/// Answers what is asked from outside, out of the program's state and on the desktop in force. Main thread only.
///
/// An action asked for is like a press of its shortcut: while the program is switched off or is not allowed to move
/// windows, it is refused. Unlike a press, one without a window is answered instead of beeped at. A request on another
/// thread stops the process.
class RemoteControl final : public platform::ControlRequests {
public:
    /// All of it outlives this.
    struct Surroundings {
        std::string version;
        const platform::Localization& localization;
        platform::ThisApplication& application;
        /// The kind of desktop, as in "X11"; the window manager may be replaced by one of another kind.
        std::function<std::string()> backend;
        /// A warning for the user while windows can be moved, as part of a sentence; empty where there is none. May be
        /// left out.
        std::function<std::string()> caution = {};
        /// Shows the program to the user.
        std::function<void()> open;
    };

    /// A rule's identifier is no longer than a file's name (NAME_MAX on Linux).
    static constexpr std::size_t longestIdentifier = 255;

    /// More rules than this are not taken from outside.
    static constexpr std::size_t mostRules = 1000;

    /// `state` must outlive this.
    RemoteControl(AppState& state, Surroundings surroundings);

    platform::ControlAnswer<void> open() override;
    [[nodiscard]] platform::ControlAnswer<platform::ControlStatus> status() override;
    platform::ControlAnswer<void> perform(std::string_view action) override;
    platform::ControlAnswer<void> setRule(std::string_view bundleIdentifier, std::string_view action) override;
    platform::ControlAnswer<void> setBorrowsShortcuts(bool borrows) override;
    platform::ControlAnswer<void> quit() override;

private:
    AppState& state;
    Surroundings surroundings;
};

} // namespace tessel
