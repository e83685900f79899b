#include "Platform/Linux/Services/SettingsPages.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace platform::linux::SettingsPages {

namespace {

enum class Subject : std::uint8_t { accessibility, privacy, keyboard };

struct Link {
    std::string_view address;
    Subject subject;
};

constexpr std::string_view scheme = "x-apple.systempreferences:";

/// Whether a program may be automated or the screen be recorded is a matter of privacy.
constexpr std::array<Link, 5> links{{
    {"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility", Subject::accessibility},
    {"x-apple.systempreferences:com.apple.preference.security?Privacy_Automation", Subject::privacy},
    {"x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture", Subject::privacy},
    {"x-apple.systempreferences:com.apple.Keyboard-Settings.extension?Shortcuts", Subject::keyboard},
    {"x-apple.systempreferences:com.apple.preference.keyboard?Shortcuts", Subject::keyboard},
}};

struct Entry {
    std::string_view desktop;
    Subject subject;
    std::string_view program;
    /// None where empty.
    std::string_view argument;
};

/// A desktop without a page for a subject shows the nearest it has.
constexpr std::array<Entry, 20> entries{{
    {"GNOME", Subject::accessibility, "gnome-control-center", "universal-access"},
    {"GNOME", Subject::privacy, "gnome-control-center", "privacy"},
    {"GNOME", Subject::keyboard, "gnome-control-center", "keyboard"},
    {"KDE", Subject::accessibility, "systemsettings", "kcm_access"},
    {"KDE", Subject::accessibility, "systemsettings5", "kcm_access"},
    {"KDE", Subject::privacy, "systemsettings", "kcm_access"},
    {"KDE", Subject::privacy, "systemsettings5", "kcm_access"},
    {"KDE", Subject::keyboard, "systemsettings", "kcm_keys"},
    {"KDE", Subject::keyboard, "systemsettings5", "kcm_keys"},
    {"XFCE", Subject::accessibility, "xfce4-accessibility-settings", ""},
    {"XFCE", Subject::privacy, "xfce4-settings-manager", ""},
    // Moving and resizing windows by keys is the window manager's; the other keys are on the keyboard's page.
    {"XFCE", Subject::keyboard, "xfwm4-settings", ""},
    {"XFCE", Subject::keyboard, "xfce4-keyboard-settings", ""},
    {"MATE", Subject::accessibility, "mate-at-properties", ""},
    {"MATE", Subject::privacy, "mate-control-center", ""},
    {"MATE", Subject::keyboard, "mate-keybinding-properties", ""},
    {"MATE", Subject::keyboard, "mate-keyboard-properties", ""},
    {"X-Cinnamon", Subject::accessibility, "cinnamon-settings", "universal-access"},
    {"X-Cinnamon", Subject::privacy, "cinnamon-settings", "privacy"},
    {"X-Cinnamon", Subject::keyboard, "cinnamon-settings", "keyboard"},
}};

} // namespace

bool isLink(std::string_view address) {
    return address.starts_with(scheme);
}

std::vector<Page> pages(std::string_view link, std::string_view currentDesktop) {
    std::vector<Page> found;
    const auto* const known = std::ranges::find(links, link, &Link::address);
    while (known != links.end() && !currentDesktop.empty()) {
        const std::size_t end = std::min(currentDesktop.find(':'), currentDesktop.size());
        const std::string_view desktop = currentDesktop.substr(0, end);
        currentDesktop.remove_prefix(std::min(end + 1, currentDesktop.size()));
        for (const Entry& entry : entries) {
            if (entry.subject == known->subject && entry.desktop == (desktop == "Cinnamon" ? "X-Cinnamon" : desktop)) {
                std::vector<std::string> arguments;
                if (!entry.argument.empty()) {
                    arguments.emplace_back(entry.argument);
                }
                found.push_back({.program = std::string(entry.program), .arguments = std::move(arguments)});
            }
        }
    }
    return found;
}

} // namespace platform::linux::SettingsPages
