#pragma once

#include "Platform/Compositor/Json.h"
#include "Platform/Compositor/Window.h"

#include <optional>
#include <string>
#include <vector>

namespace platform::hyprland {

/// A window as the compositor describes it ("clients").
struct Client {
    /// The address, which no other window has meanwhile.
    compositor::WindowIdentifier identifier;
    /// Its frame is that of its contents: borders lie around it, and are not told here. It is where the window is going
    /// to be; an animation may still go on.
    compositor::Window window;
    std::string title;
    bool isMaximized = false;
    bool isPinned = false;
    /// A number that increases from one new window to the next; zero where the compositor has none.
    std::uint64_t age = 0;

    friend bool operator==(const Client&, const Client&) = default;
};

/// Reads an answer to "j/clients". A window that makes no sense is left out; so is one that is not mapped. A hidden
/// one, as behind another one of its group, is not ready. Empty if there is no list at all. Oldest first, where the
/// compositor has the age.
[[nodiscard]] std::optional<std::vector<Client>> readClients(const compositor::Json& answer);

/// Reads an answer to "j/monitors": the outputs in the layout's points, the one at the origin first. The work area is
/// the frame without what bars and docks reserve; gaps are none of it. Empty if there is no list at all.
[[nodiscard]] std::optional<std::vector<compositor::Output>> readMonitors(const compositor::Json& answer);

/// The size of an output in the layout's points, from its size in pixels; the same for a scale that is none. The
/// compositor takes only scales in steps of 1/120 that give whole points; older versions tell the scale with two
/// digits.
[[nodiscard]] corvid::CGSize logicalSize(corvid::CGSize pixels, double scale);

} // namespace platform::hyprland
