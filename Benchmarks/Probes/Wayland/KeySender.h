#pragma once

#include "Benchmarks/Probes/Wayland/Connection.h"

#include <memory>
#include <string_view>

namespace benchmarks::wayland {

/// A person's keyboard, over the compositor's own protocol for that: its keys take the path of a device's keys. Keys
/// have the kernel's key codes.
class KeySender {
public:
    KeySender() = default;
    KeySender(const KeySender&) = delete;
    KeySender& operator=(const KeySender&) = delete;
    virtual ~KeySender() = default;

    /// On return, the key's message has left the process; there is no wait for the compositor.
    virtual void move(unsigned key, bool isDown) = 0;
};

/// "fake-input" for KWin, "remote-desktop" for GNOME Shell, "virtual-keyboard" for sway and related compositors.
std::unique_ptr<KeySender> keySenderOf(std::string_view kind, const Connection& connection);

} // namespace benchmarks::wayland
