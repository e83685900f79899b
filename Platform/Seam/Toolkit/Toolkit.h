#pragma once

namespace platform {

class ImageRenderer;
class Popover;

/// The library that shows windows and draws pictures. It is large, so it is loaded at its first use, and kept. Main
/// thread only.
class Toolkit {
public:
    Toolkit() = default;
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    virtual ~Toolkit() = default;

    [[nodiscard]] virtual Popover& popover() = 0;
    [[nodiscard]] virtual ImageRenderer& imageRenderer() = 0;

    /// Runs its own event loop with the main loop in it, until the main loop ends.
    virtual void run() = 0;
};

} // namespace platform
