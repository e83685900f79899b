#pragma once

#include "Platform/X11/XSettingsFormat.h"

#include <string>
#include <utility>
#include <vector>

namespace platform::x11 {

/// Settings in the order in which they are written.
using XSettingsList = std::vector<std::pair<std::string, std::variant<std::int32_t, std::string>>>;

/// The bytes of a settings manager, in either byte order, with a color after every setting.
[[nodiscard]] std::string writeXSettings(const XSettingsList& settings, bool isMostFirst = false);

} // namespace platform::x11
