#pragma once

#include "CorvidKitCore/Shortcut.h"

#include <cstdint>

namespace corvid {

/// A key press as a windowing toolkit reports it: the key by its position, and the modifiers.
struct KeyDownEvent {
    /// The modifier flags of the toolkit (`NSEvent.ModifierFlags`).
    static constexpr std::uint64_t shiftFlag = 1U << 17U;
    static constexpr std::uint64_t controlFlag = 1U << 18U;
    static constexpr std::uint64_t optionFlag = 1U << 19U;
    static constexpr std::uint64_t commandFlag = 1U << 20U;

    /// The hardware key code, in the numbering of `Shortcut::keyCode`.
    std::uint16_t keyCode = 0;
    /// Any of the flags above. Others (CapsLock, the numeric pad, which of two like keys it is) may be set as well.
    std::uint64_t modifierFlags = 0;
};

/// The shortcut that was pressed, for recording one. It need not be valid. Flags that a shortcut has no bit for are
/// dropped.
[[nodiscard]] constexpr Shortcut shortcutOf(const KeyDownEvent& event) {
    const auto isDown = [&event](std::uint64_t flag) { return (event.modifierFlags & flag) != 0; };
    return {.keyCode = event.keyCode,
            .modifiers = Shortcut::modifierMask({.command = isDown(KeyDownEvent::commandFlag),
                                                 .shift = isDown(KeyDownEvent::shiftFlag),
                                                 .option = isDown(KeyDownEvent::optionFlag),
                                                 .control = isDown(KeyDownEvent::controlFlag)})};
}

} // namespace corvid
