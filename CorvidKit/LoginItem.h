#pragma once

/// Whether this program starts when the user logs in. Every call reads the desktop's present state. Main thread only.
namespace corvid::LoginItem {

/// Whether it really will: registered, and neither switched off elsewhere nor waiting for the user's approval.
[[nodiscard]] bool isEnabled();

/// Tries to change it and returns the state that holds afterwards, after success or failure. A failure goes to the log.
bool setEnabled(bool enabled);

} // namespace corvid::LoginItem
