#pragma once

#include "Platform/Linux/HandledHotKeys.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/Keyboard.h"

#include <xcb/xinput.h>

#include <map>
#include <optional>

namespace platform::x11 {

/// Global hot keys as passive grabs on the root window (X11 protocol, GrabKey), one for each combination of locks.
///
/// Core grabs collide with other core grabs, which the server reports, but not with those of the X Input extension; the
/// later of the two kinds wins silently. A key that somebody holds through the extension is taken all the same, so a
/// grab of that kind is tried as well, in the same round trip, and ours is given up where that one is refused.
class HotKeys final : public linux::HandledHotKeys {
public:
    explicit HotKeys(Connection& connection);
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    /// A press or a release that came from the server.
    void handlePress(const xcb_key_press_event_t& event);
    void handleRelease(const xcb_key_release_event_t& event);

    /// Reads the keyboard again and renews the grabs if keys or modifiers have moved. False where the server did not
    /// answer in time; then all is as it was.
    [[nodiscard]] bool followKeyboard();

    /// Grabs all keys again: a grab that another program made since may hide ours, and only a new one comes before it.
    void renew();

    /// Whether a grab was lost since this was last asked: held by somebody else when it was to be renewed, or not to be
    /// had because the keyboard came too late. All are to be registered anew then.
    [[nodiscard]] bool takeLoss();

private:
    /// A key with the modifiers that must be held, locks aside.
    struct Grab {
        xcb_keycode_t keyCode = 0;
        std::uint16_t modifiers = 0;

        friend auto operator<=>(const Grab&, const Grab&) = default;
    };

    struct Registered {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        EventHotKeyID name;
        /// Nothing while the keyboard lacks the key or somebody else holds it.
        std::optional<Grab> grab;
    };

    [[nodiscard]] const KeyboardMap* keyboardMap();
    [[nodiscard]] std::optional<Grab> grabFor(std::uint32_t keyCode, std::uint32_t modifiers);
    [[nodiscard]] OSStatus establish(const Grab& grab);
    /// Takes the key through the extension and gives it back at once; the answer tells whether somebody else holds it
    /// there. Nothing where there is no extension.
    [[nodiscard]] std::optional<xcb_input_xi_passive_grab_device_cookie_t> tryThroughExtension(const Grab& grab);
    [[nodiscard]] bool isRefused(const std::optional<xcb_input_xi_passive_grab_device_cookie_t>& attempt);
    void release(const Grab& grab);
    void releaseAll();

    Connection& connection;
    std::optional<KeyboardMap> keyboard;
    std::map<std::uint64_t, Registered> registrations;
    std::uint64_t lastReference = 0;
    /// The key whose press was acted on and that is still down.
    std::optional<xcb_keycode_t> heldKey;
    bool grabWasLost = false;
};

} // namespace platform::x11
