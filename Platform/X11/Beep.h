#pragma once

#include "Platform/Seam/Desktop/Beep.h"
#include "Platform/X11/Connection.h"

namespace platform::x11 {

/// The X server's bell, which desktops turn into the sound, flash or silence that the user has chosen.
class Beep final : public platform::Beep {
public:
    explicit Beep(Connection& connection)
        : connection(connection) {}

    void beep() override {
        xcb_bell(connection.raw(), 0);
        connection.flush();
    }

private:
    Connection& connection;
};

} // namespace platform::x11
