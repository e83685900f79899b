#pragma once

#include "CorvidKitCore/Geometry.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace platform::hyprland {

/// The language of the compositor's configuration, which is that of its dispatchers, too. From 0.55 on it may be Lua;
/// 0.57 has nothing else ("Dispatchers" in Hyprland's wiki, which promises no stability).
enum class Language : std::uint8_t {
    hyprlang,
    lua,
};

/// The language that an answer to "status" names; hyprlang where it names none, as before 0.55.
[[nodiscard]] Language languageIn(std::string_view status);

/// Whether an answer means that the request was in the other language.
[[nodiscard]] bool refusesLanguage(std::string_view answer, Language language);

/// An address as the compositor writes it: "0x" and hexadecimal digits. Only such a one may be part of a request.
[[nodiscard]] bool isAddress(std::string_view text);

/// The changes that a window needs before it can have a frame of its own.
struct Release {
    bool isMaximized = false;
    bool isTiled = false;
};

/// The request that releases a window and gives it that box: size first, because a resized window keeps its middle.
/// The box is that of its contents, without borders, in the layout's points; it is rounded to whole ones. In hyprlang
/// only the focused window is released if it is maximized.
[[nodiscard]] std::string placingRequest(Language language, std::string_view address, const Release& release,
                                         const corvid::CGRect& box);

/// The request that makes a window of ours a popover with its contents at that place: above the layout and on every
/// workspace; in Lua also without a border and an animation. `isPinned`: whether it is on every workspace already.
[[nodiscard]] std::string popoverRequest(Language language, std::string_view address, bool isPinned,
                                         corvid::CGPoint topLeft);

} // namespace platform::hyprland
