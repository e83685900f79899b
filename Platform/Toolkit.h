#pragma once

namespace platform {

class ImageRenderer;
class Popover;

/// What shows windows and draws pictures. It is large, so it is loaded when it is first needed, and kept. Main thread
/// only.
class Toolkit {
public:
    Toolkit() = default;
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    virtual ~Toolkit() = default;

    [[nodiscard]] virtual Popover& popover() = 0;
    [[nodiscard]] virtual ImageRenderer& imageRenderer() = 0;

    /// Runs its own event loop with the main loop in it, until the main loop is told to end.
    virtual void run() = 0;
};

} // namespace platform
