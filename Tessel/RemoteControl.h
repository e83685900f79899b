#pragma once

#include "Platform/Seam/Desktop/Localization.h"
#include "Platform/Seam/Desktop/ThisApplication.h"
#include "Platform/Seam/Requests/ControlRequests.h"
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
    /// All of it outlives this.
    struct Context {
        std::string version;
        const platform::Localization& localization;
        platform::ThisApplication& application;
        /// The kind of desktop, as in "X11"; it may change with the window manager.
        std::function<std::string()> backend;
        /// A warning for the user while windows can be moved, as part of a sentence; empty where there is none. May be
        /// left out.
        std::function<std::string()> caution = {};
        /// Shows the program to the user.
        std::function<void()> open;
    };

    /// A rule's identifier is no longer than a file's name (NAME_MAX on Linux).
    static constexpr std::size_t longestIdentifier = 255;

    /// Requests from outside cannot add more rules than this.
    static constexpr std::size_t mostRules = 1000;

    /// `state` must outlive this.
    RemoteControl(AppState& state, Context context);

    platform::ControlAnswer<void> open() override;
    [[nodiscard]] platform::ControlAnswer<platform::ControlStatus> status() override;
    void perform(std::string_view action, Answered answered) override;
    platform::ControlAnswer<void> setRule(std::string_view bundleIdentifier, std::string_view action) override;
    platform::ControlAnswer<void> setBorrowsShortcuts(bool borrows) override;
    platform::ControlAnswer<void> quit() override;

private:
    AppState& state;
    Context context;
};

} // namespace tessel
