#pragma once

#include "Platform/MainBundle.h"

#include <filesystem>

namespace tessel {

/// What the build says of this program.
[[nodiscard]] platform::MainBundle mainBundle();

/// Where the translations of the resident program are.
[[nodiscard]] std::filesystem::path localeFolder();

/// Where the icons of this program are.
[[nodiscard]] std::filesystem::path iconFolder();

/// Where the forms of the extension for GNOME Shell are.
[[nodiscard]] std::filesystem::path shellExtensionFolder();

/// What runs inside KWin.
[[nodiscard]] std::filesystem::path kwinScript();

/// The interface's plugin: where it is installed, or beside the program in a build tree.
[[nodiscard]] std::filesystem::path menuPlugin();

} // namespace tessel
