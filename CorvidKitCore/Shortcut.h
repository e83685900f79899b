#pragma once

#include "CorvidKitCore/Coding.h"
#include "CorvidKitCore/PropertyListValue.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvid {

/// One global keyboard shortcut: a virtual key code and a set of modifier flags, in the numbering of the Carbon hot-key
/// interface. A plain value; nothing in it fails but reading a stored form.
struct Shortcut {
    /// A virtual key code: which key by its place, in the numbering of the Carbon event headers.
    std::uint32_t keyCode = 0;
    /// A set of the bits below. Values read from storage are kept as they are, other bits included.
    std::uint32_t modifiers = 0;

    /// The modifier bits (`cmdKey`, `shiftKey`, `optionKey`, `controlKey` of the Carbon event headers).
    static constexpr std::uint32_t command = 0x100;
    static constexpr std::uint32_t shift = 0x200;
    static constexpr std::uint32_t option = 0x800;
    static constexpr std::uint32_t control = 0x1000;

    /// Stands for no shortcut. It is not valid, and shows as "A": test `isValid` first.
    static const Shortcut none;

    struct ModifierKeys {
        bool command = false;
        bool shift = false;
        bool option = false;
        bool control = false;
    };

    /// The modifier bits of the keys that are down. (The field takes the shorter name.)
    [[nodiscard]] static constexpr std::uint32_t modifierMask(ModifierKeys down) {
        return (down.command ? command : 0U) | (down.shift ? shift : 0U) | (down.option ? option : 0U) |
               (down.control ? control : 0U);
    }

    /// Whether Command, Option or Control is part of it. A bare key, or one with Shift alone, belongs to typing.
    [[nodiscard]] constexpr bool isValid() const { return (modifiers & (command | option | control)) != 0; }

    /// The key caps in display order: ⌃ ⌥ ⇧ ⌘ as far as they are set, and always the key's name last. UTF-8.
    [[nodiscard]] std::vector<std::string> symbols() const;

    /// The key caps in one text, without separators.
    [[nodiscard]] std::string displayString() const;

    /// The text on a key's cap, or "#" and the decimal code for a key that is not in the table. UTF-8.
    [[nodiscard]] static std::string keyName(std::uint32_t keyCode);

    /// The form kept in a preference store: a dictionary of the integers "keyCode" and "modifiers".
    [[nodiscard]] PropertyListValue propertyListValue() const;

    /// Reads the stored form. Nothing unless both entries are integers within 32 bits; other entries are ignored.
    [[nodiscard]] static std::optional<Shortcut> fromPropertyListValue(const PropertyListValue& stored);

    /// Writes the coded form: "keyCode" and "modifiers", in this order, each an unsigned 32-bit integer.
    template <KeyedEncoder Encoder>
    void encode(Encoder& encoder) const {
        encoder.encode(keyCode, keyCodeKey);
        encoder.encode(modifiers, modifiersKey);
    }

    /// Reads the coded form; the decoder's own error where an entry is missing or does not fit.
    template <KeyedDecoder Decoder>
    [[nodiscard]] static std::expected<Shortcut, typename Decoder::Error> decode(const Decoder& decoder) {
        const auto key = decoder.decodeUnsigned32(keyCodeKey);
        if (!key) {
            return std::unexpected(key.error());
        }
        const auto mask = decoder.decodeUnsigned32(modifiersKey);
        if (!mask) {
            return std::unexpected(mask.error());
        }
        return Shortcut{.keyCode = *key, .modifiers = *mask};
    }

    friend bool operator==(const Shortcut&, const Shortcut&) = default;

private:
    static constexpr std::string_view keyCodeKey = "keyCode";
    static constexpr std::string_view modifiersKey = "modifiers";
};

inline constexpr Shortcut Shortcut::none{};

} // namespace corvid

/// Key code first, then modifiers, mixed so that no two shortcuts collide in 64 bits and every bit reaches the low
/// ones.
template <>
struct std::hash<corvid::Shortcut> {
    std::size_t operator()(const corvid::Shortcut& shortcut) const noexcept {
        std::uint64_t bits = std::uint64_t{shortcut.keyCode} << 32U | shortcut.modifiers;
        bits = (bits ^ bits >> 30U) * 0xbf58476d1ce4e5b9U;
        bits = (bits ^ bits >> 27U) * 0x94d049bb133111ebU;
        return static_cast<std::size_t>(bits ^ bits >> 31U);
    }
};
