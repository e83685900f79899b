#pragma once

#include "Platform/Linux/HandledHotKeys.h"
#include "Platform/X11/Connection.h"
#include "Platform/X11/KeyGrabs.h"
#include "Platform/X11/Keyboard.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace platform::x11 {

/// Global hot keys as passive grabs on the root window. A combination counts as held by somebody else whichever kind of
/// grab holds it, although the server refuses only a grab of the same kind; a borrowed one is held by the other kind.
///
/// A hot key is lost that somebody else holds when it is to be renewed, or that could not be registered because the
/// server did not describe the keyboard in time.
class HotKeys final : public linux::HandledHotKeys {
public:
    explicit HotKeys(Connection& connection);
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    void setBorrows(bool consent) override { borrows = consent; }

    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode, std::uint32_t modifiers) const override;

    /// An event that came from the server, of whatever kind.
    void handle(const xcb_generic_event_t& event);

    /// Reads the keyboard again and renews the grabs if keys or modifiers have moved. False where the server did not
    /// answer in time; then all is as it was.
    [[nodiscard]] bool followKeyboard();

    /// Grabs all keys again: a grab that another program made since may hide ours, and only a new one comes before it.
    void renew();

    /// The same for borrowed keys alone; whether there is one. Their holder may grab them anew at any time without any
    /// event.
    bool renewBorrowed();

    [[nodiscard]] bool hasBorrowed() const;

private:
    using Carbon = std::pair<std::uint32_t, std::uint32_t>;

    struct Registered {
        /// Key code and modifiers.
        Carbon carbon;
        EventHotKeyID name;
        KeyCombination key;
        /// Nothing while the keyboard lacks the key or somebody else holds it.
        std::optional<KeyGrabs::Kind> grab;
        /// The kind of grab by which it was borrowed, for as long as it is registered: one of the other kind would keep
        /// the holder from having its key back.
        std::optional<KeyGrabs::Kind> borrowedThrough;
    };

    void press(const KeyCombination& pressed);
    void releaseKey(xcb_keycode_t key);
    [[nodiscard]] const KeyboardMap* keyboardMap();
    [[nodiscard]] std::optional<KeyCombination> combinationFor(const Carbon& carbon);
    void take(Registered& registered);
    /// Grabs again, where the key is now.
    void renew(Registered& registered);
    void release(Registered& registered);

    Connection& connection;
    KeyGrabs grabs;
    std::optional<KeyboardMap> keyboard;
    std::map<std::uint64_t, Registered> registrations;
    std::uint64_t lastReference = 0;
    /// The key whose press was acted on and that is still down.
    std::optional<xcb_keycode_t> heldKey;
    bool borrows = false;
    /// Refused, and to be had by borrowing.
    std::set<Carbon> lendable;
};

} // namespace platform::x11
