#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace platform::linux {

/// The folder that an item names to panels for the program's own icons (StatusNotifierItem specification,
/// IconThemePath). `icons` is that folder, with "hicolor" in it; `dataFolders` are those of the XDG Base Directory
/// Specification, and `desktops` the names of the present desktop. Reads the file system; any thread.
///
/// Empty where a panel does better without it:
/// - The icons are in "icons" of a data folder, so a panel has them by their names (Icon Theme Specification), and can
///   colour them like its own.
/// - The panel is Cinnamon's. It passes the path of the file on as a name, and draws nothing for a symbolic one
///   (applet.js of xapp-status@cinnamon.org, 6.4 and 6.6). Without the folder it draws the pixels.
[[nodiscard]] std::string iconThemePath(const std::filesystem::path& icons, const std::vector<std::string>& dataFolders,
                                        const std::vector<std::string>& desktops);

} // namespace platform::linux
