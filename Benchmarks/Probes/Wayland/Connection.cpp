#include "Benchmarks/Probes/Wayland/Connection.h"

#include <poll.h>

#include <algorithm>
#include <array>

namespace benchmarks::wayland {

namespace {

void forget(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {
}

void answerPing(void* /*data*/, xdg_wm_base* shell, std::uint32_t serial) {
    xdg_wm_base_pong(shell, serial);
}

constexpr xdg_wm_base_listener shellListener{.ping = answerPing};

} // namespace

Connection::Connection()
    : display(wl_display_connect(nullptr)) {
    static constexpr wl_registry_listener listener{.global = announce, .global_remove = forget};
    if (!display) {
        fail("no Wayland compositor answers");
    }
    registry.reset(wl_display_get_registry(raw()));
    wl_registry_add_listener(registry.get(), &listener, this);
    synchronize();
    if (!compositor || !memory || !seat || !shell) {
        fail("the compositor shows no windows");
    }
    xdg_wm_base_add_listener(shell.get(), &shellListener, nullptr);
}

void Connection::synchronize() const {
    if (wl_display_roundtrip(raw()) < 0) {
        fail("the compositor is gone");
    }
}

bool Connection::handleEvents(Clock::time_point limit, int descriptor) const {
    while (wl_display_prepare_read(raw()) != 0) {
        wl_display_dispatch_pending(raw());
    }
    flush();
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(limit - Clock::now());
    std::array<pollfd, 2> waited{{{wl_display_get_fd(raw()), POLLIN, 0}, {descriptor, POLLIN, 0}}};
    const int ready = ::poll(waited.data(), waited.size(), static_cast<int>(std::max<long>(left.count(), 0)));
    if (ready > 0 && waited.front().revents != 0) {
        if (wl_display_read_events(raw()) < 0 || wl_display_dispatch_pending(raw()) < 0) {
            fail("the compositor is gone");
        }
    } else {
        wl_display_cancel_read(raw());
    }
    return ready > 0 && waited.back().revents != 0;
}

void Connection::announce(void* data, wl_registry* /*registry*/, std::uint32_t name, const char* interface,
                          std::uint32_t version) {
    static_cast<Connection*>(data)->take(name, interface, version);
}

void Connection::take(std::uint32_t name, std::string_view interface, std::uint32_t version) {
    const auto bind = [&]<typename Object>(Owned<Object>& object, const wl_interface& wanted, std::uint32_t least) {
        if (interface == wanted.name && version >= least && !object) {
            object.reset(static_cast<Object*>(wl_registry_bind(registry.get(), name, &wanted, least)));
        }
    };
    bind(compositor, wl_compositor_interface, 4);
    bind(memory, wl_shm_interface, 1);
    bind(seat, wl_seat_interface, 1);
    bind(shell, xdg_wm_base_interface, 1);
    bind(fakeInput, org_kde_kwin_fake_input_interface, 4);
    bind(keyboards, zwp_virtual_keyboard_manager_v1_interface, 1);
}

} // namespace benchmarks::wayland
