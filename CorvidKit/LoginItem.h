#pragma once

/// Whether this program starts when the user logs in. Every call asks the desktop afresh. Main thread only.
namespace corvid::LoginItem {

/// Whether it really will: registered, and neither switched off elsewhere nor waiting for the user's approval.
[[nodiscard]] bool isEnabled();

/// Tries to make it so and gives the state that holds afterwards, whatever became of the attempt. A failure goes to the
/// log.
bool setEnabled(bool enabled);

} // namespace corvid::LoginItem
