#pragma once

#include "Platform/X11/Connection.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::herbstluftwm {

/// Gives herbstluftwm commands (herbstluftwm(1)).
///
/// herbstluftwm executes the words in the property `_HERBST_IPC_ARGS` of a new window of the class `HERBST_IPC_CLASS`,
/// and replies with the properties `_HERBST_IPC_OUTPUT` and `_HERBST_IPC_EXIT_STATUS` of that window. Each command has
/// a window of its own, because herbstluftwm does not look at windows from before its start. Main thread only.
class CommandWindow {
public:
    /// The output of a command; empty if it failed, or if there was no reply within the turn's time.
    [[nodiscard]] std::optional<std::string> outputOf(x11::Connection& connection,
                                                      const std::vector<std::string>& words);

private:
    struct Names {
        xcb_atom_t arguments = XCB_ATOM_NONE;
        xcb_atom_t output = XCB_ATOM_NONE;
        xcb_atom_t status = XCB_ATOM_NONE;
    };

    [[nodiscard]] bool internNames(x11::Connection& connection);
    [[nodiscard]] std::optional<std::string> readReply(x11::Connection& connection, xcb_window_t window) const;

    Names names;
};

} // namespace platform::herbstluftwm
