#pragma once

namespace platform::linux {

/// Where the desktop's portals are on the session bus (XDG Desktop Portal documentation, "API Reference").
inline constexpr const char* portalName = "org.freedesktop.portal.Desktop";
inline constexpr const char* portalPath = "/org/freedesktop/portal/desktop";

} // namespace platform::linux
