#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Compositor/Window.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Seam/Desktop/Accessibility.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The messages between this program and its script in KWin (Resources/kwin/tessel.js), as JSON texts. Rectangles are
/// in KWin's own space: logical pixels, y down. Messages from the script are checked: a text that is too long or not in
/// the script's format is dropped, and texts within it that are too long for a name are read as empty.
namespace platform::kwin::ScriptMessages {

/// The whole state; a script's first report.
using Opened = compositor::WindowTable::Contents;

/// A new window, or the new state of one.
struct WindowReport {
    compositor::WindowIdentifier identifier;
    compositor::Window window;
};

struct Gone {
    compositor::WindowIdentifier identifier;
};

struct Focused {
    /// Empty if no window of the user has the keyboard focus.
    std::optional<compositor::WindowIdentifier> identifier;
};

struct Screens {
    /// At least one.
    std::vector<compositor::Output> outputs;
};

using News = std::variant<Opened, WindowReport, Gone, Focused, Screens>;

enum class Outcome {
    done,
    gone,
    /// The window must not be moved.
    refused,
    failed,
};

/// The result of one command.
struct Result {
    std::uint64_t number = 0;
    Outcome outcome = Outcome::failed;
    /// The frame that was requested of the window: the command's, within the window's size limits.
    std::optional<corvid::CGRect> asked;
    /// The window's frame right after the command; it may not have the requested one yet.
    std::optional<corvid::CGRect> frame;
    /// Whether KWin has forced the frame on the window; the window may still request another.
    bool isForced = false;
    std::optional<corvid::CGPoint> pointer;
};

[[nodiscard]] std::optional<News> readNews(std::string_view text);
[[nodiscard]] std::optional<std::vector<Result>> readResults(std::string_view text);

/// One command each, for `answer`.
[[nodiscard]] std::string place(std::uint64_t number, const compositor::WindowIdentifier& window,
                                const corvid::CGRect& frame);
[[nodiscard]] std::string placeOwn(std::uint64_t number, ProcessIdentifier process, const std::string& title,
                                   corvid::CGPoint topLeft);
[[nodiscard]] std::string pointer(std::uint64_t number);

/// The reply to a call of the script: commands, or none to make it call again.
[[nodiscard]] std::string answer(const std::vector<std::string>& commands);
/// After this reply the script neither calls nor reports again.
[[nodiscard]] std::string end();

} // namespace platform::kwin::ScriptMessages
