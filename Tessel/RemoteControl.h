#pragma once

#include "Platform/ControlRequests.h"
#include "Tessel/AppState.h"

#include <functional>
#include <string>

namespace tessel {

/// Answers requests from other processes, from the program's state and on the current desktop. Main thread only.
///
/// A requested action is like a press of its shortcut: while the program is switched off or is not allowed to move
/// windows, it is refused. Unlike a press, an action without a window gets an error reply instead of a beep. A request
/// on another thread stops the process.
class RemoteControl final : public platform::ControlRequests {
public:
    struct Surroundings {
        std::string version;
        /// The kind of desktop, as in "X11"; it may change with the window manager.
        std::function<std::string()> backend;
        /// The reason why windows cannot be moved, while that is so, as part of a sentence; empty if it is unknown.
        std::function<std::string()> hindrance;
        /// A warning for the user while windows can be moved, in the same form. Optional.
        std::function<std::string()> caution = {};
        /// Shows the program to the user.
        std::function<void()> open;
        /// Ends the program after the present turn of the event loop.
        std::function<void()> quit;
    };

    /// A rule's identifier is no longer than a file's name (NAME_MAX on Linux).
    static constexpr std::size_t longestIdentifier = 255;

    /// Requests from outside cannot add more rules than this.
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
