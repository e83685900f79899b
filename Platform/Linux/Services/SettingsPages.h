#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The desktops' settings pages for links of the scheme "x-apple.systempreferences".
namespace platform::linux::SettingsPages {

/// A program with its arguments that shows a page of settings.
struct Page {
    std::string program;
    std::vector<std::string> arguments;

    friend bool operator==(const Page&, const Page&) = default;
};

/// Whether an address is a link to a page of settings, be it one that is known or not.
[[nodiscard]] bool isLink(std::string_view address);

/// The best pages for a link, on the desktop that `XDG_CURRENT_DESKTOP` names (a list with colons: Desktop Entry
/// Specification, OnlyShowIn): the best first. None for an unknown link or desktop.
[[nodiscard]] std::vector<Page> pages(std::string_view link, std::string_view currentDesktop);

} // namespace platform::linux::SettingsPages
