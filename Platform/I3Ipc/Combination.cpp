#include "Platform/I3Ipc/Combination.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

namespace platform::i3ipc {

namespace {

constexpr unsigned bit(Modifier modifier) {
    return static_cast<unsigned>(modifier);
}

// Names in sway/common/util, "modifiers", and those of i3 and later versions; in lower case.
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

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return lower;
}

/// A group is no key: it is the layout in which the binding holds. Empty for a key.
std::optional<unsigned> groupNamed(std::string_view name) {
    constexpr std::string_view prefix = "group";
    if (name == "mode_switch") {
        return 2;
    }
    return name.size() == prefix.size() + 1 && name.starts_with(prefix)
               ? std::optional(static_cast<unsigned>(static_cast<unsigned char>(name.back())) - '0')
               : std::nullopt;
}

} // namespace

std::optional<Combination> readCombination(std::string_view text, bool isNumber) {
    Combination read{.modifiers = 0, .key = {}, .isNumber = isNumber, .group = 0};
    for (const auto part : std::views::split(text, '+')) {
        const std::string name = lowered(std::string_view(part.begin(), part.end()));
        const auto* modifier = std::ranges::find(modifierNames, name, &std::pair<std::string_view, unsigned>::first);
        if (modifier != modifierNames.end()) {
            read.modifiers |= modifier->second;
        } else if (const auto group = groupNamed(name)) {
            read.group = *group;
        } else {
            if (!read.key.empty() || name.empty()) {
                return std::nullopt;
            }
            read.key = name;
        }
    }
    return read.key.empty() ? std::nullopt : std::optional(std::move(read));
}

std::optional<HotKeyCombination> HotKeyCombination::of(std::uint32_t keyCode, std::uint32_t modifiers) {
    const corvid::Key* key = corvid::keyOf(keyCode);
    return key != nullptr ? std::optional(HotKeyCombination{.modifiers = corvid::coreModifiers(modifiers), .key = key})
                          : std::nullopt;
}

std::string HotKeyCombination::text() const {
    std::string text;
    for (const auto& [modifier, name] : {std::pair{Modifier::mod4, "Mod4+"}, std::pair{Modifier::control, "Ctrl+"},
                                         std::pair{Modifier::mod1, "Mod1+"}, std::pair{Modifier::shift, "Shift+"}}) {
        if ((modifiers & bit(modifier)) != 0) {
            text += name;
        }
    }
    return text + std::to_string(key->keymapCode());
}

bool HotKeyCombination::isSame(const Combination& combination) const {
    // Locks are not held down: the compositor ignores them in its comparison.
    constexpr unsigned locks = bit(Modifier::lock) | bit(Modifier::mod2);
    const bool isKey =
        combination.isNumber ? combination.key == std::to_string(key->keymapCode()) : key->hasSymbol(combination.key);
    return isKey && (combination.modifiers & ~locks) == modifiers;
}

} // namespace platform::i3ipc
