#include "Benchmarks/Probes/Wayland/KeySender.h"

#include "Platform/Linux/Files/FileDescriptor.h"

#include <systemd/sd-bus.h>

#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <string>

namespace benchmarks::wayland {

namespace {

class FakeInput final : public KeySender {
public:
    explicit FakeInput(const Connection& connection)
        : connection(connection) {
        if (!connection.fakeInput) {
            fail("the compositor has no org_kde_kwin_fake_input");
        }
        org_kde_kwin_fake_input_authenticate(connection.fakeInput.get(), "probe", "presses keys");
    }

    void move(unsigned key, bool isDown) override {
        org_kde_kwin_fake_input_keyboard_key(connection.fakeInput.get(), key, isDown ? 1 : 0);
        connection.flush();
    }

private:
    const Connection& connection;
};

/// virtual-keyboard-unstable-v1
class VirtualKeyboard final : public KeySender {
public:
    explicit VirtualKeyboard(const Connection& connection)
        : connection(connection) {
        constexpr std::string_view keymap =
            R"map(xkb_keymap { xkb_keycodes { include "evdev+aliases(qwerty)" }; xkb_types { include "complete" };)map"
            R"map( xkb_compatibility { include "complete" };)map"
            R"map( xkb_symbols { include "pc+us+inet(evdev)" }; };)map";
        if (!connection.keyboards) {
            fail("the compositor has no zwp_virtual_keyboard_manager_v1");
        }
        keyboard.reset(
            zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(connection.keyboards.get(), connection.seat.get()));
        const platform::linux::FileDescriptor file(::memfd_create("keymap", MFD_CLOEXEC));
        // The terminating zero belongs to the text.
        const std::size_t size = keymap.size() + 1;
        if (!file || ::write(file.get(), keymap.data(), size) != static_cast<ssize_t>(size)) {
            fail("there is no memory for a keymap");
        }
        zwp_virtual_keyboard_v1_keymap(keyboard.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.get(),
                                       static_cast<std::uint32_t>(size));
        zwp_virtual_keyboard_v1_modifiers(keyboard.get(), 0, 0, 0, 0);
        connection.synchronize();
    }

    void move(unsigned key, bool isDown) override {
        zwp_virtual_keyboard_v1_key(keyboard.get(), 0, key, isDown ? 1 : 0);
        if (const std::uint32_t bit = modifierOf(key); bit != 0) {
            held = isDown ? held | bit : held & ~bit;
            zwp_virtual_keyboard_v1_modifiers(keyboard.get(), held, 0, 0, 0);
        }
        connection.flush();
    }

private:
    /// The bits of XKB's real modifiers.
    static std::uint32_t modifierOf(unsigned key) {
        constexpr std::uint32_t control = 4;
        constexpr std::uint32_t alt = 8;
        return key == KEY_LEFTCTRL ? control : key == KEY_LEFTALT ? alt : 0;
    }

    const Connection& connection;
    Owned<zwp_virtual_keyboard_v1> keyboard;
    std::uint32_t held = 0;
};

/// org.gnome.Mutter.RemoteDesktop
class RemoteDesktop final : public KeySender {
public:
    RemoteDesktop() {
        sd_bus* opened = nullptr;
        if (sd_bus_open_user(&opened) < 0) {
            fail("there is no session bus");
        }
        bus.reset(opened);
        const Message answer = call("/org/gnome/Mutter/RemoteDesktop", service, "CreateSession");
        const char* path = nullptr;
        if (sd_bus_message_read(answer.get(), "o", &path) <= 0) {
            fail("the shell lets nobody press keys");
        }
        session = path;
        call(session.c_str(), sessionInterface, "Start");
        // The seat gets its keyboard with the first key.
        move(KEY_LEFTCTRL, true);
        move(KEY_LEFTCTRL, false);
    }

    void move(unsigned key, bool isDown) override {
        sd_bus_message* created = nullptr;
        if (sd_bus_message_new_method_call(bus.get(), &created, service, session.c_str(), sessionInterface,
                                           "NotifyKeyboardKeycode") < 0) {
            fail("there is no memory for a message");
        }
        const Message message(created);
        const bool isSent = sd_bus_message_append(message.get(), "ub", key, int{isDown}) >= 0 &&
                            sd_bus_message_set_expect_reply(message.get(), 0) >= 0 &&
                            sd_bus_send(bus.get(), message.get(), nullptr) >= 0 && sd_bus_flush(bus.get()) >= 0;
        if (!isSent) {
            fail("the session bus is gone");
        }
    }

private:
    struct Close {
        void operator()(sd_bus* raw) const { sd_bus_flush_close_unref(raw); }
        void operator()(sd_bus_message* raw) const { sd_bus_message_unref(raw); }
    };

    using Message = std::unique_ptr<sd_bus_message, Close>;

    static constexpr const char* service = "org.gnome.Mutter.RemoteDesktop";
    static constexpr const char* sessionInterface = "org.gnome.Mutter.RemoteDesktop.Session";

    Message call(const char* path, const char* interface, const char* method) {
        sd_bus_message* answer = nullptr;
        if (sd_bus_call_method(bus.get(), service, path, interface, method, nullptr, &answer, nullptr) < 0) {
            fail("the shell lets nobody press keys");
        }
        return Message(answer);
    }

    std::unique_ptr<sd_bus, Close> bus;
    std::string session;
};

} // namespace

std::unique_ptr<KeySender> keySenderOf(std::string_view kind, const Connection& connection) {
    if (kind == "fake-input") {
        return std::make_unique<FakeInput>(connection);
    }
    if (kind == "virtual-keyboard") {
        return std::make_unique<VirtualKeyboard>(connection);
    }
    if (kind == "remote-desktop") {
        return std::make_unique<RemoteDesktop>();
    }
    fail("nobody knows that kind of keySender");
}

} // namespace benchmarks::wayland
