#pragma once

#include "Platform/Seam/Desktop/MainBundle.h"

#include <filesystem>

namespace tessel {

/// The build's facts about this program.
[[nodiscard]] platform::MainBundle mainBundle();

/// The folder of the resident program's translations.
[[nodiscard]] std::filesystem::path localeFolder();

/// The folder of this program's icons.
[[nodiscard]] std::filesystem::path iconFolder();

/// The folder of the forms of the extension for GNOME Shell.
[[nodiscard]] std::filesystem::path shellExtensionFolder();

/// The code that runs inside Cinnamon.
[[nodiscard]] std::filesystem::path cinnamonCore();

/// The script that runs inside KWin.
[[nodiscard]] std::filesystem::path kwinScript();

/// The interface's plugin: its installed path, or the one beside the program in a build tree.
[[nodiscard]] std::filesystem::path menuPlugin();

} // namespace tessel
