#pragma once

#include "Platform/Compositor/Window.h"
#include "Platform/Compositor/WindowTable.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The JSON that the core sends, with a check of every value: an entry that is incomplete, has a value of another
/// type or exceeds a limit is left out, or the whole message is empty. Rectangles are in the shell's space. Any thread.
namespace platform::shellcore {

/// The core's reply to Hello.
struct Hello {
    int version = 0;
    /// Differs whenever the core starts again, with no keys held and no item shown.
    std::string session;
    /// The last focused window need not be among them.
    compositor::WindowTable::Contents contents;
};

struct WindowFrame {
    compositor::WindowIdentifier window;
    corvid::CGRect frame;
    bool isFullscreen = false;
};

[[nodiscard]] std::optional<Hello> parseHello(std::string_view text);
[[nodiscard]] std::optional<std::pair<compositor::WindowIdentifier, compositor::Window>>
parseWindow(std::string_view text);
[[nodiscard]] std::optional<std::vector<compositor::Output>> parseOutputs(std::string_view text);
[[nodiscard]] std::optional<std::vector<WindowFrame>> parseFrames(std::string_view text);

} // namespace platform::shellcore
