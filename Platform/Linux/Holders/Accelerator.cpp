#include "Platform/Linux/Holders/Accelerator.h"

#include "CorvidKitCore/Keys.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

namespace platform::linux {

namespace {

using corvid::Shortcut;
using ModifierName = std::pair<std::string_view, std::uint32_t>;

constexpr std::array gtkModifiers{
    ModifierName{"primary", Shortcut::control}, ModifierName{"control", Shortcut::control},
    ModifierName{"ctrl", Shortcut::control},    ModifierName{"ctl", Shortcut::control},
    ModifierName{"alt", Shortcut::option},      ModifierName{"mod1", Shortcut::option},
    ModifierName{"shift", Shortcut::shift},     ModifierName{"shft", Shortcut::shift},
    ModifierName{"super", Shortcut::command},   ModifierName{"mod4", Shortcut::command},
};

constexpr std::array openboxModifiers{
    ModifierName{"c", Shortcut::control}, ModifierName{"control", Shortcut::control},
    ModifierName{"a", Shortcut::option},  ModifierName{"mod1", Shortcut::option},
    ModifierName{"s", Shortcut::shift},   ModifierName{"shift", Shortcut::shift},
    ModifierName{"w", Shortcut::command}, ModifierName{"mod4", Shortcut::command},
};

std::string inLowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return lower;
}

/// Whether it is one of the modifiers, and adds it.
bool add(std::uint32_t& mask, std::string_view name, std::span<const ModifierName> names) {
    const auto found = std::ranges::find(names, inLowerCase(name), &ModifierName::first);
    if (found == names.end()) {
        return false;
    }
    mask |= found->second;
    return true;
}

/// The number of a key in keymaps: the kernel's and eight.
std::optional<std::uint32_t> numberIn(std::string_view key) {
    if (!key.starts_with("0x")) {
        return std::nullopt;
    }
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(key.data() + 2, key.data() + key.size(), number, 16);
    return error == std::errc() && end == key.data() + key.size() ? std::optional(number) : std::nullopt;
}

/// The symbol's name on the key's label, or for its position: "page_up" is "Page Up". Empty for symbols of another part
/// of the keyboard, and for names that are no symbol.
std::string keyName(std::string_view symbol) {
    constexpr std::array arrows{std::pair{"left", "←"}, std::pair{"right", "→"}, std::pair{"up", "↑"},
                                std::pair{"down", "↓"}};
    for (const auto& [arrow, name] : arrows) {
        if (symbol == arrow) {
            return name;
        }
    }
    constexpr std::array unnamed{"0x", "kp_", "xf86", "above_tab", "disabled"};
    if (std::ranges::any_of(unnamed, [&](const char* beginning) { return symbol.starts_with(beginning); })) {
        return {};
    }
    std::string name(symbol);
    bool isFirst = true;
    for (char& character : name) {
        character = character == '_' ? ' ' : character;
        if (isFirst && character >= 'a' && character <= 'z') {
            character = static_cast<char>(character - 'a' + 'A');
        }
        isFirst = character == ' ';
    }
    return name;
}

} // namespace

std::optional<Accelerator> readAccelerator(std::string_view text) {
    Accelerator read;
    while (text.starts_with('<')) {
        const std::size_t end = text.find('>');
        if (end == std::string_view::npos || !add(read.modifiers, text.substr(1, end - 1), gtkModifiers)) {
            return std::nullopt;
        }
        text.remove_prefix(end + 1);
    }
    read.key = inLowerCase(text);
    return read.key.empty() ? std::nullopt : std::optional(std::move(read));
}

std::optional<Accelerator> readOpenboxKey(std::string_view text) {
    Accelerator read;
    // A key may be "-" itself.
    for (std::size_t dash = 0; (dash = text.find('-')) != std::string_view::npos && dash + 1 < text.size();) {
        if (!add(read.modifiers, text.substr(0, dash), openboxModifiers)) {
            return std::nullopt;
        }
        text.remove_prefix(dash + 1);
    }
    read.key = inLowerCase(text);
    return read.key.empty() ? std::nullopt : std::optional(std::move(read));
}

std::optional<std::string> acceleratorText(const Shortcut& shortcut) {
    const corvid::Key* key = corvid::keyOf(shortcut.keyCode);
    if (key == nullptr || corvid::hasUnknownModifier(shortcut.modifiers)) {
        return std::nullopt;
    }
    std::string text;
    for (const corvid::Modifier& each : corvid::modifiersIn(shortcut.modifiers)) {
        text += each.accelerator;
    }
    std::array<char, 8> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), key->keymapCode(), 16);
    return text + "0x" + std::string(digits.data(), end);
}

bool isSame(const Accelerator& accelerator, const corvid::Shortcut& shortcut) {
    if (accelerator.modifiers != shortcut.modifiers) {
        return false;
    }
    const corvid::Key* key = corvid::keyOf(shortcut.keyCode);
    return key != nullptr && (key->hasSymbol(accelerator.key) || numberIn(accelerator.key) == key->keymapCode());
}

std::optional<ShortcutHolder::Keys> otherKeys(const std::vector<std::string>& accelerators,
                                              const std::vector<Shortcut>& shortcuts) {
    for (const std::string& text : accelerators) {
        const auto accelerator = readAccelerator(text);
        const std::string name = accelerator ? keyName(accelerator->key) : std::string();
        const bool isOther = !name.empty() && std::ranges::none_of(shortcuts, [&](const Shortcut& shortcut) {
            return isSame(*accelerator, shortcut);
        });
        if (isOther) {
            return ShortcutHolder::Keys{.modifiers = accelerator->modifiers, .name = name};
        }
    }
    return std::nullopt;
}

} // namespace platform::linux
