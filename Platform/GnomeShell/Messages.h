#pragma once

#include "Platform/Compositor/Window.h"
#include "Platform/Compositor/WindowTable.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The JSON that the extension sends, read with distrust: what lacks something, has a value of another type or is
/// beyond all measure is left out, or is nothing as a whole. Rectangles are in the shell's space. Any thread.
namespace platform::gnomeshell {

/// How the extension answers the first question.
struct Hello {
    int version = 0;
    /// Another one whenever the extension begins anew, with no keys held and no item shown.
    std::string session;
    /// The last window that had the keyboard need not be among them.
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

} // namespace platform::gnomeshell
