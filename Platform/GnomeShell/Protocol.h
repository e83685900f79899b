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
/// The answer to whoever does not own the name, or has not said Hello.
inline constexpr const char* denied = "org.corvid.Tessel.Windows1.Denied";
/// The answer to Hello in a shell that lacks something; the message has the names, with commas between them.
inline constexpr const char* unusable = "org.corvid.Tessel.Windows1.Unusable";

/// The last major version of the shell that the extension was tried on; later ones are only expected to be alike.
inline constexpr int lastTriedShell = 51;

/// The extension's name among the shell's extensions.
inline constexpr const char* extension = "tessel@corvid.org";

inline constexpr const char* shellName = "org.gnome.Shell";
inline constexpr const char* shellPath = "/org/gnome/Shell";

} // namespace platform::gnomeshell::Protocol
