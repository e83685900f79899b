#pragma once

#include "CorvidKitCore/Coding.h"
#include "CorvidKitCore/Shortcut.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tessel {

/// An action on a window. An enumeration: its values are `WindowAction::leftHalf` and so on; they can be compared,
/// ordered as declared, hashed and switched over.
class WindowAction {
public:
    enum class Case : std::uint8_t { leftHalf, rightHalf, center, maximize, almostMaximize, maximizeHeight };
    using enum Case;

    /// The type in which an action is stored.
    using RawValue = std::string;

    constexpr WindowAction(Case value)
        : value{value} {}

    constexpr operator Case() const { return value; }

    /// The action of a raw value; empty for any other text. Exact, letter case included.
    [[nodiscard]] static std::optional<WindowAction> fromRawValue(std::string_view rawValue);

    /// The text for the action in settings.
    [[nodiscard]] std::string_view rawValue() const;

    /// Its title for the user, in English: the key of its translations.
    [[nodiscard]] std::string_view title() const;

    /// The name of its symbol among the application's images.
    [[nodiscard]] std::string_view symbol() const;

    /// Its fixed shortcut: Control, Option and one key.
    [[nodiscard]] corvid::Shortcut shortcut() const;

    /// An action is its own identity in a list.
    [[nodiscard]] constexpr WindowAction id() const { return *this; }

    /// Every action with its shortcut.
    [[nodiscard]] static std::map<WindowAction, corvid::Shortcut> shortcuts();

    /// Every action, in declaration order.
    static const std::array<WindowAction, 6> allCases;

    /// Every action, in the order of the menu's rows.
    static const std::array<WindowAction, 6> menuOrder;

    /// The actions that an app rule may hold, in the order of the rules' picker.
    static const std::array<WindowAction, 2> ruleActions;

    /// Writes the raw value as a single text.
    template <corvid::SingleValueEncoder Encoder>
    void encode(Encoder& encoder) const {
        encoder.encode(rawValue());
    }

    /// Reads a single text; returns the decoder's own error for anything else and for a text that is no raw value.
    template <corvid::SingleValueDecoder Decoder>
    [[nodiscard]] static std::expected<WindowAction, typename Decoder::Error> decode(const Decoder& decoder) {
        const auto text = decoder.decodeText();
        if (!text) {
            return std::unexpected(text.error());
        }
        if (const std::optional<WindowAction> action = fromRawValue(*text)) {
            return *action;
        }
        return std::unexpected(decoder.dataCorrupted("not a window action: " + *text));
    }

private:
    Case value;
};

inline constexpr std::array<WindowAction, 6> WindowAction::allCases{leftHalf, rightHalf,      center,
                                                                    maximize, almostMaximize, maximizeHeight};
inline constexpr std::array<WindowAction, 6> WindowAction::menuOrder{leftHalf,       rightHalf,      maximize,
                                                                     almostMaximize, maximizeHeight, center};
inline constexpr std::array<WindowAction, 2> WindowAction::ruleActions{maximize, center};

} // namespace tessel

template <>
struct std::hash<tessel::WindowAction> {
    std::size_t operator()(tessel::WindowAction action) const noexcept {
        return std::hash<tessel::WindowAction::Case>{}(action);
    }
};
