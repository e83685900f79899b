#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

namespace tessel {

/// The program's state, in one word. An enumeration: its values are `AppStatus::paused` and so on.
class AppStatus {
public:
    enum class Case : std::uint8_t {
        /// The user switched it off.
        paused,
        /// On, but not allowed to control windows.
        waitingForPermission,
        /// On and allowed, but at least one shortcut could not be registered.
        shortcutsTaken,
        /// On, allowed, and every shortcut registered.
        active,
    };
    using enum Case;

    constexpr AppStatus(Case value)
        : value{value} {}

    /// The status of a state. The first matching one wins: a paused program never reports a missing permission, and
    /// shortcuts count only once the permission is there.
    constexpr AppStatus(bool isEnabled, bool hasAccessibility, bool hasTakenShortcuts)
        : value{!isEnabled          ? paused
                : !hasAccessibility ? waitingForPermission
                : hasTakenShortcuts ? shortcutsTaken
                                    : active} {}

    constexpr operator Case() const { return value; }

    /// The name of the status item's symbol. Taken shortcuts do not change it.
    [[nodiscard]] constexpr std::string_view menuBarSymbol() const {
        switch (value) {
        case paused:
            return "rectangle.split.2x1";
        case waitingForPermission:
            return "exclamationmark.triangle.fill";
        case shortcutsTaken:
        case active:
            return "uiwindow.split.2x1";
        }
        std::unreachable();
    }

private:
    Case value;
};

} // namespace tessel

template <>
struct std::hash<tessel::AppStatus> {
    std::size_t operator()(tessel::AppStatus status) const noexcept {
        return std::hash<tessel::AppStatus::Case>{}(status);
    }
};
