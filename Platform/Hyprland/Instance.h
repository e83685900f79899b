#pragma once

#include <string>

namespace platform::hyprland {

/// The environment's words about the running compositor.
struct InstanceFacts {
    /// `$XDG_RUNTIME_DIR`.
    std::string runtimeFolder;
    /// `HYPRLAND_INSTANCE_SIGNATURE`.
    std::string signature;
    /// `WAYLAND_DISPLAY`: a name or a path.
    std::string display;
};

/// The folder of that compositor's two sockets, whether or not it runs ("IPC" in Hyprland's wiki). Empty if the
/// signature is none.
[[nodiscard]] std::string folderOf(const InstanceFacts& facts);

/// The folder of the compositor that shows this session's windows: the one of the signature or, if that has gone, the
/// one that a later compositor on the same display has made. Empty if neither runs. Does not wait.
[[nodiscard]] std::string runningFolder(const InstanceFacts& facts);

/// The path of Wayland's socket; empty if the display has no name.
[[nodiscard]] std::string displaySocket(const InstanceFacts& facts);

/// The sockets in such a folder.
[[nodiscard]] std::string requestSocket(const std::string& folder);
[[nodiscard]] std::string eventSocket(const std::string& folder);

} // namespace platform::hyprland
