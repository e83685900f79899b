#pragma once

#include "Platform/Compositor/Turn.h"
#include "Platform/Seam/Desktop/Screens.h"

namespace platform::compositor {

/// The outputs, in the screen space; none without access.
class Screens final : public platform::Screens {
public:
    explicit Screens(Turn& turn)
        : turn(turn) {}

    [[nodiscard]] std::vector<Screen> screens() override;

private:
    Turn& turn;
};

} // namespace platform::compositor
