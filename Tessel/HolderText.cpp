#include "Tessel/HolderText.h"

#include "Tessel/FilledText.h"
#include "Tessel/ShortcutText.h"

#include <array>
#include <string_view>
#include <utility>

namespace tessel {

namespace {

constexpr std::string_view holderTable = "Tessel";

constexpr std::string_view textOf(platform::KeyPurpose purpose) {
    using enum platform::KeyPurpose;
    switch (purpose) {
    case workspaceOnTheLeft:
        return "switches to the workspace on the left";
    case workspaceOnTheRight:
        return "switches to the workspace on the right";
    case workspaceAbove:
        return "switches to the workspace above";
    case workspaceBelow:
        return "switches to the workspace below";
    case showDesktop:
        return "shows the desktop";
    case allWorkspaces:
        return "shows all workspaces";
    case allWindows:
        return "shows all windows";
    }
    std::unreachable();
}

} // namespace

std::string purposeText(const platform::ShortcutHolder& holder, const platform::Localization& localization) {
    if (const auto* known = std::get_if<platform::KeyPurpose>(&holder.purpose)) {
        return localization.text(holderTable, textOf(*known));
    }
    return std::get<std::string>(holder.purpose);
}

std::string holderText(const corvid::Shortcut& shortcut, const platform::ShortcutHolder& holder,
                       const platform::Localization& localization) {
    const std::array parts{shortcutText(shortcut, localization), purposeText(holder, localization), holder.heldBy};
    const bool isSentence = std::holds_alternative<platform::KeyPurpose>(holder.purpose);
    // A holder's own words are no verb that the keys could be the subject of.
    const std::string_view form = parts[1].empty() ? "%1 belongs to %3" : isSentence ? "%1 %2 (%3)" : "%1: %2 (%3)";
    return filled(localization.text(holderTable, form), parts);
}

} // namespace tessel
