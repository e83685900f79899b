#pragma once

/// What the program and its extension in the shell agree on; the other side is Resources/gnome-shell/core.
namespace platform::gnomeshell::Protocol {

/// The extension serves whoever owns this name.
inline constexpr const char* busName = "org.corvid.Tessel.Windows";
inline constexpr const char* objectPath = "/org/corvid/Tessel/Windows";
inline constexpr const char* interface = "org.corvid.Tessel.Windows1";
/// Rises with every change of the interface that this program must know of.
inline constexpr int version = 1;

inline constexpr const char* noSuchWindow = "org.corvid.Tessel.Windows1.NoSuchWindow";

/// The extension's name among the shell's extensions.
inline constexpr const char* extension = "tessel@corvid.org";

inline constexpr const char* shellName = "org.gnome.Shell";
inline constexpr const char* shellPath = "/org/gnome/Shell";

} // namespace platform::gnomeshell::Protocol
