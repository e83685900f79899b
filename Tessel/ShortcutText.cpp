#include "Tessel/ShortcutText.h"

#include <utility>

namespace tessel {

std::string shortcutText(const corvid::Shortcut& shortcut) {
    return shortcutText(shortcut.modifiers, corvid::Shortcut::keyName(shortcut.keyCode));
}

std::string shortcutText(std::uint32_t modifiers, std::string_view key) {
    using corvid::Shortcut;
    std::string keys;
    for (const auto& [modifier, name] : {std::pair{Shortcut::control, "Ctrl+"},
                                         {Shortcut::option, "Alt+"},
                                         {Shortcut::shift, "Shift+"},
                                         {Shortcut::command, "Super+"}}) {
        keys += (modifiers & modifier) != 0 ? name : "";
    }
    return keys.append(key);
}

} // namespace tessel
