#include "Tessel/ShortcutText.h"

#include <utility>

namespace tessel {

std::string shortcutText(const corvid::Shortcut& shortcut) {
    using corvid::Shortcut;
    std::string keys;
    for (const auto& [modifier, name] : {std::pair{Shortcut::control, "Ctrl+"},
                                         {Shortcut::option, "Alt+"},
                                         {Shortcut::shift, "Shift+"},
                                         {Shortcut::command, "Super+"}}) {
        keys += (shortcut.modifiers & modifier) != 0 ? name : "";
    }
    return keys + Shortcut::keyName(shortcut.keyCode);
}

} // namespace tessel
