#pragma once

namespace platform::linux {

/// The bus name and path of the desktop's portals (XDG Desktop Portal documentation, "API Reference").
inline constexpr const char* portalName = "org.freedesktop.portal.Desktop";
inline constexpr const char* portalPath = "/org/freedesktop/portal/desktop";

} // namespace platform::linux
