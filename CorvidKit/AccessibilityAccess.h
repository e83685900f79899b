#pragma once

/// Whether the desktop allows this program to move other applications' windows. Every call reads the present state.
namespace corvid::AccessibilityAccess {

/// Whether it does. Never shows anything.
[[nodiscard]] bool isTrusted();

/// The same; if the permission is missing, the desktop itself shows the user how to grant it.
bool requestIfNeeded();

} // namespace corvid::AccessibilityAccess
