#pragma once

#include "Benchmarks/Probes/Wayland/Connection.h"

#include <memory>
#include <string_view>

namespace benchmarks::wayland {

/// A person at the keyboard, by a door that the compositor has for that: what it does to keys goes the way of a
/// device's. Keys are numbered as the kernel does.
class Hand {
public:
    Hand() = default;
    Hand(const Hand&) = delete;
    Hand& operator=(const Hand&) = delete;
    virtual ~Hand() = default;

    /// The key's message has left the process when this returns; nobody has been waited for.
    virtual void move(unsigned key, bool isDown) = 0;
};

/// "fake-input" for KWin, "remote-desktop" for GNOME Shell, "virtual-keyboard" for sway and its kin.
std::unique_ptr<Hand> handOf(std::string_view kind, const Connection& connection);

} // namespace benchmarks::wayland
