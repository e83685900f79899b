#pragma once

#include "Platform/Compositor/Turn.h"
#include "Platform/Seam/Desktop/Workspace.h"

namespace platform::compositor {

/// The application with the keyboard focus: the owner of the focused window.
class Workspace final : public platform::Workspace {
public:
    explicit Workspace(Turn& turn)
        : turn(turn) {}

    [[nodiscard]] std::optional<ProcessIdentifier> frontmostApplication() override;

private:
    Turn& turn;
};

} // namespace platform::compositor
