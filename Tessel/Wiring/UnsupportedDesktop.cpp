#include "Tessel/Wiring/UnsupportedDesktop.h"

namespace tessel {

std::string UnsupportedDesktop::hindrance() {
    return "this Wayland compositor has no way for Tessel to move windows; X11, Plasma, GNOME and sway have one";
}

} // namespace tessel
