#include "Tessel/ShortcutText.h"

#include <array>
#include <functional>
#include <utility>

namespace tessel {

namespace {

struct ModifierKey {
    std::uint32_t modifier;
    std::string_view name;
};

using corvid::Shortcut;
constexpr std::array modifierKeys{ModifierKey{Shortcut::control, "Ctrl"}, ModifierKey{Shortcut::option, "Alt"},
                                  ModifierKey{Shortcut::shift, "Shift"}, ModifierKey{Shortcut::command, "Super"}};

template <typename Naming>
std::vector<std::string> namesOf(std::uint32_t modifiers, std::string_view key, const Naming& naming) {
    std::vector<std::string> names;
    for (const auto& [modifier, name] : modifierKeys) {
        if ((modifiers & modifier) != 0) {
            names.emplace_back(naming(name));
        }
    }
    names.emplace_back(key);
    return names;
}

std::vector<std::string> localNamesOf(std::uint32_t modifiers, std::string_view key,
                                      const platform::Localization& localization) {
    return namesOf(modifiers, key, [&](std::string_view name) { return localization.text("Tessel", name); });
}

std::string joined(const std::vector<std::string>& names) {
    std::string keys;
    for (const std::string& name : names) {
        keys += (keys.empty() ? "" : "+") + name;
    }
    return keys;
}

} // namespace

std::string shortcutText(const Shortcut& shortcut) {
    return joined(namesOf(shortcut.modifiers, Shortcut::keyName(shortcut.keyCode), std::identity()));
}

std::string shortcutText(const Shortcut& shortcut, const platform::Localization& localization) {
    return joined(keysAsPrinted(shortcut, localization));
}

std::string shortcutText(std::uint32_t modifiers, std::string_view key, const platform::Localization& localization) {
    return joined(localNamesOf(modifiers, key, localization));
}

std::vector<std::string> keysAsPrinted(const Shortcut& shortcut, const platform::Localization& localization) {
    return localNamesOf(shortcut.modifiers, Shortcut::keyName(shortcut.keyCode), localization);
}

} // namespace tessel
