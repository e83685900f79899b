#pragma once

#include "Platform/Seam/Desktop/Workspace.h"
#include "Platform/X11/Turn.h"

namespace platform::x11 {

/// The application with the keyboard focus: the owner of the active window.
class Workspace final : public platform::Workspace {
public:
    explicit Workspace(Turn& turn)
        : turn(turn) {}

    [[nodiscard]] std::optional<ProcessIdentifier> frontmostApplication() override;

private:
    Turn& turn;
};

} // namespace platform::x11
