#include "Platform/Wayfire/KeyPress.h"

#include "CorvidKitCore/Keys.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

namespace platform::wayfire {

namespace {

using corvid::Shortcut;

/// In the order in which Wayfire's own options write them.
constexpr std::array modifierNames{
    std::pair<std::uint32_t, std::string_view>{Shortcut::command, "<super>"},
    std::pair<std::uint32_t, std::string_view>{Shortcut::control, "<ctrl>"},
    std::pair<std::uint32_t, std::string_view>{Shortcut::option, "<alt>"},
    std::pair<std::uint32_t, std::string_view>{Shortcut::shift, "<shift>"},
};

/// Keys whose name differs from that of their symbol (linux/input-event-codes.h).
constexpr std::array ownNames{
    std::pair<std::string_view, std::string_view>{"escape", "ESC"},
    std::pair<std::string_view, std::string_view>{"bracketleft", "LEFTBRACE"},
    std::pair<std::string_view, std::string_view>{"bracketright", "RIGHTBRACE"},
    std::pair<std::string_view, std::string_view>{"return", "ENTER"},
    std::pair<std::string_view, std::string_view>{"period", "DOT"},
};

constexpr std::string_view keyPrefix = "KEY_";

std::string kernelName(const corvid::Key& key) {
    std::string name(keyPrefix);
    const auto* own = std::ranges::find(ownNames, key.symbol, &std::pair<std::string_view, std::string_view>::first);
    if (own != ownNames.end()) {
        return name.append(own->second);
    }
    std::ranges::transform(key.symbol, std::back_inserter(name), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return name;
}

/// Takes the next word or modifier from the front; the angle brackets separate as blanks do.
std::string_view takeWord(std::string_view& text) {
    constexpr std::string_view blanks = " \t\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    std::size_t end = 0;
    if (text.starts_with('<')) {
        const std::size_t bracket = text.find('>');
        end = bracket == std::string_view::npos ? text.size() : bracket + 1;
    } else {
        end = std::min(text.find_first_of(" \t\n<"), text.size());
    }
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
}

std::optional<KeyPress> keyPressIn(std::string_view text) {
    KeyPress read;
    for (std::string_view word = takeWord(text); !word.empty(); word = takeWord(text)) {
        const auto* modifier =
            std::ranges::find(modifierNames, word, &std::pair<std::uint32_t, std::string_view>::second);
        if (modifier != modifierNames.end()) {
            read.modifiers |= modifier->first;
        } else if (word.starts_with(keyPrefix) && read.key.empty()) {
            read.key = word;
        } else {
            return std::nullopt;
        }
    }
    return read.key.empty() ? std::nullopt : std::optional(std::move(read));
}

} // namespace

std::optional<KeyPress> KeyPress::of(std::uint32_t keyCode, std::uint32_t modifiers) {
    const corvid::Key* key = corvid::keyOf(keyCode);
    if (key == nullptr || corvid::hasUnknownModifier(modifiers)) {
        return std::nullopt;
    }
    return KeyPress{.modifiers = modifiers, .key = kernelName(*key)};
}

std::string KeyPress::text() const {
    std::string text;
    for (const auto& [modifier, name] : modifierNames) {
        if ((modifiers & modifier) != 0) {
            text.append(name).append(" ");
        }
    }
    return text + key;
}

std::vector<KeyPress> keyPressesIn(std::string_view value) {
    std::vector<KeyPress> found;
    for (const auto part : std::views::split(value, '|')) {
        if (auto press = keyPressIn(std::string_view(part.begin(), part.end()))) {
            found.push_back(*std::move(press));
        }
    }
    return found;
}

} // namespace platform::wayfire
