#include "Tessel/ShortcutText.h"

#include "CorvidKitCore/Keys.h"

namespace tessel {

std::string shortcutText(const corvid::Shortcut& shortcut) {
    return shortcutText(shortcut.modifiers, corvid::Shortcut::keyName(shortcut.keyCode));
}

std::string shortcutText(std::uint32_t modifiers, std::string_view key) {
    std::string keys;
    for (const corvid::Modifier& each : corvid::modifiersIn(modifiers)) {
        keys.append(each.label).append("+");
    }
    return keys.append(key);
}

} // namespace tessel
