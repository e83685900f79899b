#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tessel {

/// The two lists of the interface.
enum class MenuTab : std::uint8_t { shortcuts, apps };

/// Every tab, in display order.
inline constexpr std::array<MenuTab, 2> allMenuTabs{MenuTab::shortcuts, MenuTab::apps};

/// The tab's name for programs.
[[nodiscard]] constexpr std::string_view rawValue(MenuTab tab) {
    return tab == MenuTab::shortcuts ? "shortcuts" : "apps";
}

} // namespace tessel
