#include "Platform/Sway/Combination.h"

#include "Platform/Linux/KeyPositions.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

namespace platform::sway {

namespace {

constexpr unsigned bit(Modifier modifier) {
    return static_cast<unsigned>(modifier);
}

// sway/common/util, "modifiers", and what i3 and later versions call them; in lower case.
constexpr std::array modifierNames{
    std::pair{std::string_view("shift"), bit(Modifier::shift)},
    std::pair{std::string_view("lock"), bit(Modifier::lock)},
    std::pair{std::string_view("control"), bit(Modifier::control)},
    std::pair{std::string_view("ctrl"), bit(Modifier::control)},
    std::pair{std::string_view("mod1"), bit(Modifier::mod1)},
    std::pair{std::string_view("alt"), bit(Modifier::mod1)},
    std::pair{std::string_view("mod2"), bit(Modifier::mod2)},
    std::pair{std::string_view("mod3"), bit(Modifier::mod3)},
    std::pair{std::string_view("mod4"), bit(Modifier::mod4)},
    std::pair{std::string_view("super"), bit(Modifier::mod4)},
    std::pair{std::string_view("mod5"), bit(Modifier::mod5)},
};

struct KeyNames {
    std::string_view xkbName;
    std::string_view plain;
    std::string_view shifted;
};

// xkeyboard-config, symbols/us. Letters are their own names.
constexpr std::array symbolTable{
    KeyNames{"ESC", "escape", ""},
    KeyNames{"TLDE", "grave", "asciitilde"},
    KeyNames{"AE01", "1", "exclam"},
    KeyNames{"AE02", "2", "at"},
    KeyNames{"AE03", "3", "numbersign"},
    KeyNames{"AE04", "4", "dollar"},
    KeyNames{"AE05", "5", "percent"},
    KeyNames{"AE06", "6", "asciicircum"},
    KeyNames{"AE07", "7", "ampersand"},
    KeyNames{"AE08", "8", "asterisk"},
    KeyNames{"AE09", "9", "parenleft"},
    KeyNames{"AE10", "0", "parenright"},
    KeyNames{"AE11", "minus", "underscore"},
    KeyNames{"AE12", "equal", "plus"},
    KeyNames{"BKSP", "backspace", ""},
    KeyNames{"TAB", "tab", "iso_left_tab"},
    KeyNames{"AD11", "bracketleft", "braceleft"},
    KeyNames{"AD12", "bracketright", "braceright"},
    KeyNames{"BKSL", "backslash", "bar"},
    KeyNames{"AC10", "semicolon", "colon"},
    KeyNames{"AC11", "apostrophe", "quotedbl"},
    KeyNames{"RTRN", "return", ""},
    KeyNames{"AB08", "comma", "less"},
    KeyNames{"AB09", "period", "greater"},
    KeyNames{"AB10", "slash", "question"},
    KeyNames{"SPCE", "space", ""},
    KeyNames{"LEFT", "left", ""},
    KeyNames{"RGHT", "right", ""},
    KeyNames{"UP", "up", ""},
    KeyNames{"DOWN", "down", ""},
    KeyNames{"FK01", "f1", ""},
    KeyNames{"FK02", "f2", ""},
    KeyNames{"FK03", "f3", ""},
    KeyNames{"FK04", "f4", ""},
    KeyNames{"FK05", "f5", ""},
    KeyNames{"FK06", "f6", ""},
    KeyNames{"FK07", "f7", ""},
    KeyNames{"FK08", "f8", ""},
    KeyNames{"FK09", "f9", ""},
    KeyNames{"FK10", "f10", ""},
    KeyNames{"FK11", "f11", ""},
    KeyNames{"FK12", "f12", ""},
};

struct LetterRow {
    std::string_view prefix;
    std::string_view letters;
};

constexpr std::array letterRows{LetterRow{"AD", "qwertyuiop"}, LetterRow{"AC", "asdfghjkl"},
                                LetterRow{"AB", "zxcvbnm"}};

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return lower;
}

std::vector<std::string_view> symbolsOf(std::string_view xkbName) {
    const auto* found = std::ranges::find(symbolTable, xkbName, &KeyNames::xkbName);
    if (found != symbolTable.end()) {
        return found->shifted.empty() ? std::vector{found->plain} : std::vector{found->plain, found->shifted};
    }
    for (const LetterRow& row : letterRows) {
        // Keys count from "01".
        if (xkbName.size() == 4 && xkbName.starts_with(row.prefix)) {
            const auto place = static_cast<std::size_t>((xkbName[2] - '0') * 10 + xkbName[3] - '1');
            if (place < row.letters.size()) {
                return {row.letters.substr(place, 1)};
            }
        }
    }
    return {};
}

/// A group is no key: it says in which layout the binding holds.
bool isGroup(std::string_view name) {
    return name == "mode_switch" || (name.size() == 6 && name.starts_with("group"));
}

} // namespace

std::optional<Combination> readCombination(std::string_view text, bool isNumber) {
    Combination read{.modifiers = 0, .key = {}, .isNumber = isNumber};
    for (const auto part : std::views::split(text, '+')) {
        const std::string name = lowered(std::string_view(part.begin(), part.end()));
        const auto* modifier = std::ranges::find(modifierNames, name, &std::pair<std::string_view, unsigned>::first);
        if (modifier != modifierNames.end()) {
            read.modifiers |= modifier->second;
        } else if (!isGroup(name)) {
            if (!read.key.empty() || name.empty()) {
                return std::nullopt;
            }
            read.key = name;
        }
    }
    return read.key.empty() ? std::nullopt : std::optional(std::move(read));
}

std::optional<HotKeyCombination> HotKeyCombination::of(std::uint32_t carbonKeyCode, std::uint32_t carbonModifiers) {
    constexpr std::array carbonBits{
        std::pair{0x100U, Modifier::mod4},
        std::pair{0x200U, Modifier::shift},
        std::pair{0x800U, Modifier::mod1},
        std::pair{0x1000U, Modifier::control},
    };
    const auto kernelNumber = linux::kernelKeyCode(carbonKeyCode);
    const auto xkbName = linux::xkbKeyName(carbonKeyCode);
    if (!kernelNumber || !xkbName) {
        return std::nullopt;
    }
    constexpr std::uint32_t offset = 8;
    HotKeyCombination combination{.modifiers = 0, .number = *kernelNumber + offset, .symbols = symbolsOf(*xkbName)};
    for (const auto& [carbonBit, modifier] : carbonBits) {
        combination.modifiers |= (carbonModifiers & carbonBit) != 0 ? bit(modifier) : 0U;
    }
    return combination;
}

std::string HotKeyCombination::text() const {
    std::string text;
    for (const auto& [modifier, name] : {std::pair{Modifier::mod4, "Mod4+"}, std::pair{Modifier::control, "Ctrl+"},
                                         std::pair{Modifier::mod1, "Mod1+"}, std::pair{Modifier::shift, "Shift+"}}) {
        if ((modifiers & bit(modifier)) != 0) {
            text += name;
        }
    }
    return text + std::to_string(number);
}

bool HotKeyCombination::isAmong(const std::set<Combination>& bound) const {
    // Locks are not held down: the compositor leaves them out of what it compares.
    constexpr unsigned locks = bit(Modifier::lock) | bit(Modifier::mod2);
    const std::string ownNumber = std::to_string(number);
    return std::ranges::any_of(bound, [&](const Combination& each) {
        const bool isKey =
            each.isNumber ? each.key == ownNumber : std::ranges::find(symbols, each.key) != symbols.end();
        return isKey && (each.modifiers & ~locks) == modifiers;
    });
}

} // namespace platform::sway
