#pragma once

#include "Benchmarks/Probes/Wayland/Connection.h"
#include "Platform/Linux/Files/FileDescriptor.h"

#include <cstdint>
#include <optional>

namespace benchmarks::wayland {

struct Size {
    int width = 0;
    int height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

/// A window without contents, which takes every size at once and records the times when it is configured and shown.
class Window {
public:
    /// Returns when it is shown.
    Window(const Connection& connection, const char* name, Size size);

    /// The last configured size, in points.
    [[nodiscard]] Size size() const { return present; }

    /// The first time when it received this size, with no other one in between.
    [[nodiscard]] Clock::time_point configured() const { return sizeArrived; }

    /// The time when the compositor had painted its picture in this size; empty before.
    [[nodiscard]] std::optional<Clock::time_point> painted() const { return pictureShown; }

    /// The last time when it received any size or state.
    [[nodiscard]] Clock::time_point lastWord() const { return wordArrived; }

    /// The modifiers held down while it has the keyboard focus, as XKB's bits.
    [[nodiscard]] std::uint32_t modifiers() const { return heldModifiers; }

    /// The time of the last press in it of a key that is not a modifier.
    [[nodiscard]] std::optional<Clock::time_point> keyArrival() const { return keyArrived; }

    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

private:
    void followKeyboard(wl_seat* seat);
    void configured(std::uint32_t serial);
    void noteNextPicture();
    void draw();

    platform::linux::FileDescriptor pixels;
    Owned<wl_shm_pool> pool;
    Owned<wl_surface> surface;
    Owned<xdg_surface> shellSurface;
    Owned<xdg_toplevel> toplevel;
    Owned<wl_keyboard> keyboard;
    Size present;
    Size announced;
    bool isShown = false;
    std::uint32_t heldModifiers = 0;
    Clock::time_point sizeArrived;
    Owned<wl_callback> picture;
    std::optional<Clock::time_point> pictureShown;
    Clock::time_point wordArrived;
    std::optional<Clock::time_point> keyArrived;
};

} // namespace benchmarks::wayland
