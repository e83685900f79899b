#include "Benchmarks/Probes/Wayland/Window.h"

#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <unistd.h>

namespace benchmarks::wayland {

namespace {

// As large as any screen here. The pixels are never written, so they take no memory.
constexpr int mostPixels = 4096 * 2304;
constexpr int bytesOfPixel = 4;

Window& windowOf(void* data) {
    return *static_cast<Window*>(data);
}

void endBuffer(void* /*data*/, wl_buffer* buffer) {
    wl_buffer_destroy(buffer);
}

bool isModifier(std::uint32_t key) {
    return key == KEY_LEFTCTRL || key == KEY_LEFTALT;
}

} // namespace

Window::Window(const Connection& connection, const char* name, Size size)
    : pixels(::memfd_create("pixels", MFD_CLOEXEC))
    , surface(wl_compositor_create_surface(connection.compositor.get()))
    , shellSurface(xdg_wm_base_get_xdg_surface(connection.shell.get(), surface.get()))
    , toplevel(xdg_surface_get_toplevel(shellSurface.get()))
    , present(size)
    , announced(size) {
    static constexpr xdg_surface_listener surfaceListener{
        .configure = [](void* data, xdg_surface*, std::uint32_t serial) { windowOf(data).configured(serial); }};
    static constexpr xdg_toplevel_listener toplevelListener{
        .configure =
            [](void* data, xdg_toplevel*, int width, int height, wl_array*) {
                // A size of zero leaves the choice to the window.
                if (width > 0 && height > 0) {
                    windowOf(data).announced = {.width = width, .height = height};
                }
            },
        .close = [](void*, xdg_toplevel*) { fail("the window was closed"); },
        .configure_bounds = [](void*, xdg_toplevel*, int, int) {},
        .wm_capabilities = [](void*, xdg_toplevel*, wl_array*) {}};
    if (!pixels || ::ftruncate(pixels.get(), off_t{mostPixels} * bytesOfPixel) != 0) {
        fail("there is no memory for a window");
    }
    pool.reset(wl_shm_create_pool(connection.memory.get(), pixels.get(), mostPixels * bytesOfPixel));
    xdg_surface_add_listener(shellSurface.get(), &surfaceListener, this);
    xdg_toplevel_add_listener(toplevel.get(), &toplevelListener, this);
    xdg_toplevel_set_title(toplevel.get(), name);
    xdg_toplevel_set_app_id(toplevel.get(), name);
    followKeyboard(connection.seat.get());
    wl_surface_commit(surface.get());
    while (!isShown) {
        connection.synchronize();
    }
}

void Window::followKeyboard(wl_seat* seat) {
    static constexpr wl_keyboard_listener keyboardListener{
        .keymap = [](void*, wl_keyboard*, std::uint32_t, int file, std::uint32_t) { ::close(file); },
        .enter = [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {},
        .leave = [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {},
        .key =
            [](void* data, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t key, std::uint32_t state) {
                if (state == WL_KEYBOARD_KEY_STATE_PRESSED && !isModifier(key)) {
                    windowOf(data).keyArrived = Clock::now();
                }
            },
        .modifiers = [](void* data, wl_keyboard*, std::uint32_t, std::uint32_t held, std::uint32_t, std::uint32_t,
                        std::uint32_t) { windowOf(data).heldModifiers = held; },
        .repeat_info = [](void*, wl_keyboard*, std::int32_t, std::int32_t) {}};
    static constexpr wl_seat_listener seatListener{
        .capabilities =
            [](void* data, wl_seat* from, std::uint32_t capabilities) {
                Window& window = windowOf(data);
                if ((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0 && !window.keyboard) {
                    window.keyboard.reset(wl_seat_get_keyboard(from));
                    wl_keyboard_add_listener(window.keyboard.get(), &keyboardListener, data);
                }
            },
        .name = [](void*, wl_seat*, const char*) {}};
    wl_seat_add_listener(seat, &seatListener, this);
}

void Window::configured(std::uint32_t serial) {
    wordArrived = Clock::now();
    xdg_surface_ack_configure(shellSurface.get(), serial);
    if (present != announced) {
        present = announced;
        sizeArrived = wordArrived;
        noteNextPicture();
    }
    draw();
    isShown = true;
}

void Window::draw() {
    static constexpr wl_buffer_listener bufferListener{.release = endBuffer};
    if (present.width * present.height > mostPixels) {
        fail("the window is larger than any screen");
    }
    wl_buffer* buffer = wl_shm_pool_create_buffer(pool.get(), 0, present.width, present.height,
                                                  present.width * bytesOfPixel, WL_SHM_FORMAT_XRGB8888);
    wl_buffer_add_listener(buffer, &bufferListener, nullptr);
    wl_surface_attach(surface.get(), buffer, 0, 0);
    wl_surface_damage(surface.get(), 0, 0, present.width, present.height);
    wl_surface_commit(surface.get());
}

void Window::noteNextPicture() {
    static constexpr wl_callback_listener listener{
        .done = [](void* data, wl_callback*, std::uint32_t) { windowOf(data).pictureShown = Clock::now(); }};
    pictureShown.reset();
    picture.reset(wl_surface_frame(surface.get()));
    wl_callback_add_listener(picture.get(), &listener, this);
}

} // namespace benchmarks::wayland
