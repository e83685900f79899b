#pragma once

#include "CorvidKitCore/Keys.h"
#include "Platform/Compositor/Json.h"
#include "Platform/Hyprland/Words.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::hyprland {

/// A hot key: a key by its position, with modifiers.
struct Combination {
    /// Bits of the X protocol, which are the compositor's, too.
    std::uint32_t modifiers = 0;
    /// Never null.
    const corvid::Key* key = nullptr;

    /// The arguments are in the numbering of `corvid::Shortcut`. Nothing for a key code that no keyboard has.
    [[nodiscard]] static std::optional<Combination> of(std::uint32_t keyCode, std::uint32_t modifiers);

    /// The modifiers as the protocols for hot keys number them: 1 Shift, 2 Control, 4 Alt, 8 Super.
    [[nodiscard]] std::uint32_t protocolModifiers() const;
    /// The symbol of the key without Shift on an American keyboard, as an XKB keysym. Nothing for a key whose symbol is
    /// not known here by its number.
    [[nodiscard]] std::optional<std::uint32_t> keysym() const;

    friend auto operator<=>(const Combination&, const Combination&) = default;
};

/// A binding that the compositor holds ("j/binds").
struct Bind {
    std::uint32_t modifiers = 0;
    /// The key code; zero where the key is given by its symbol.
    std::uint32_t keyCode = 0;
    /// The name of the symbol, in lower case.
    std::string key;
    /// The mode in which it holds; empty for the usual one.
    std::string submap;
    /// Its effect, for a person: its description, or its dispatcher with the argument. Empty if neither says it.
    std::string purpose;
    /// The number that we have given to one of ours; zero for those of others.
    std::uint64_t ours = 0;

    [[nodiscard]] bool isOf(const Combination& combination) const;

    friend bool operator==(const Bind&, const Bind&) = default;
};

/// Reads an answer to "j/binds". What makes no sense is left out; so are bindings of a mouse. Empty if there is no list
/// at all.
[[nodiscard]] std::optional<std::vector<Bind>> readBinds(const compositor::Json& answer);

/// The program that has a combination by one of the protocols for hot keys, as an answer to "j/globalshortcuts" names
/// it: by its identifier, and with its own words for the key. Nothing if the answer names none, as that of versions
/// before 0.57.
[[nodiscard]] std::optional<ShortcutHolder> readHolder(const compositor::Json& answer, const Combination& combination);

/// The request for a binding of ours, of versions that know no protocol for hot keys: it does nothing but tell
/// "custom>>tessel:NUMBER". The handle of one in Lua stays in a variable, since removing one by its keys would remove
/// the user's, too, in every submap.
[[nodiscard]] std::string bindingRequest(Language language, const Combination& combination, std::uint64_t number);

/// The request that removes such a binding. In hyprlang it removes all that the combination has.
[[nodiscard]] std::string unbindingRequest(Language language, const Combination& combination, std::uint64_t number);

/// The number in the data of a "custom" event of ours.
[[nodiscard]] std::optional<std::uint64_t> pressedNumber(std::string_view data);

} // namespace platform::hyprland
