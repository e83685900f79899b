#pragma once

#include "Platform/Seam/Desktop/Screens.h"
#include "Platform/X11/Turn.h"

namespace platform::x11 {

/// The monitors of an X screen, read again in every turn of the event loop.
class Screens final : public platform::Screens {
public:
    explicit Screens(Turn& turn)
        : turn(turn) {}

    [[nodiscard]] std::vector<Screen> screens() override;

private:
    Turn& turn;
};

} // namespace platform::x11
