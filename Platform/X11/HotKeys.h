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

/// Global hot keys as passive grabs on the root window. A combination counts as held if another client has either kind
/// of grab on it, although the server refuses only a grab of the same kind; a borrowed one is held by the other kind.
class HotKeys final : public linux::HandledHotKeys {
public:
    explicit HotKeys(Connection& connection);
    ~HotKeys() override;

    [[nodiscard]] Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                              EventHotKeyID name) override;
    void unregisterHotKey(EventHotKeyRef reference) override;

    void setBorrows(bool consent) override { borrows = consent; }

    [[nodiscard]] HotKeyLoan loan(std::uint32_t keyCode, std::uint32_t modifiers) const override;

    /// An event of any kind from the server.
    void handle(const xcb_generic_event_t& event);

    /// Reads the keyboard again and renews the grabs if keys or modifiers have moved. False if the server did not reply
    /// in time; then nothing has changed.
    [[nodiscard]] bool followKeyboard();

    /// Grabs all keys again: a later grab of another program may hide ours, and only a new one precedes it.
    void renew();

    /// The same for borrowed keys alone; returns whether there is one. Their holder may have renewed its grabs at any
    /// time, which no event reports.
    bool renewBorrowed();

    /// Whether a grab was lost since the last check: another client held it when it was renewed, or the keyboard's map
    /// came too late. All must be registered again then.
    [[nodiscard]] bool takeLoss();

private:
    using Carbon = std::pair<std::uint32_t, std::uint32_t>;

    struct Registered {
        /// Key code and modifiers.
        Carbon carbon;
        EventHotKeyID name;
        KeyCombination key;
        /// Empty while the keyboard lacks the key or another client holds it.
        std::optional<KeyGrabs::Kind> grab;
        /// The kind of grab by which it was borrowed, for as long as it is registered: a grab of the other kind would
        /// prevent the holder from getting its key back.
        std::optional<KeyGrabs::Kind> borrowedThrough;
    };

    void press(const KeyCombination& pressed);
    void releaseKey(xcb_keycode_t key);
    [[nodiscard]] const KeyboardMap* keyboardMap();
    [[nodiscard]] std::optional<KeyCombination> combinationFor(const Carbon& carbon);
    void take(Registered& registered);
    /// Grabs again, at the key's present position.
    void renew(Registered& registered);
    void release(Registered& registered);

    Connection& connection;
    KeyGrabs grabs;
    std::optional<KeyboardMap> keyboard;
    std::map<std::uint64_t, Registered> registrations;
    std::uint64_t lastReference = 0;
    /// The key that has been down since its handled press.
    std::optional<xcb_keycode_t> heldKey;
    bool grabWasLost = false;
    bool borrows = false;
    /// Refused, but can be borrowed.
    std::set<Carbon> lendable;
};

} // namespace platform::x11
