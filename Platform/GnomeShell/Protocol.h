#pragma once

/// Names of GNOME Shell and of our extension in it. The messages themselves are those of Platform/ShellCore.
namespace platform::gnomeshell::Protocol {

/// The last major version of the shell that the extension was tested on; later ones are only expected to work.
inline constexpr int lastTriedShell = 51;

/// The extension's name among the shell's extensions.
inline constexpr const char* extension = "tessel@corvid.org";

inline constexpr const char* shellName = "org.gnome.Shell";
inline constexpr const char* shellPath = "/org/gnome/Shell";

} // namespace platform::gnomeshell::Protocol
