#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Accessibility.h"
#include "Platform/Compositor/Window.h"
#include "Platform/Compositor/WindowTable.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What goes between this program and its script in KWin (Resources/kwin/tessel.js), as JSON texts. Rectangles are in
/// KWin's own space: logical pixels, y down. What comes from the script is checked: a text that is too long or not as
/// the script writes it is no message at all, and texts within it that are too long to be a name are empty.
namespace platform::kwin::ScriptMessages {

/// All that there is; the first that a script tells.
using Opened = compositor::WindowTable::Contents;

/// A window that is new, or as it is now.
struct Told {
    compositor::WindowIdentifier identifier;
    compositor::Window window;
};

struct Gone {
    compositor::WindowIdentifier identifier;
};

struct Focused {
    /// Nothing where no window of the user's has the keyboard.
    std::optional<compositor::WindowIdentifier> identifier;
};

struct Screens {
    /// At least one.
    std::vector<compositor::Output> outputs;
};

using News = std::variant<Opened, Told, Gone, Focused, Screens>;

enum class Outcome {
    done,
    gone,
    /// The window must not be moved.
    refused,
    failed,
};

/// What became of one command.
struct Result {
    std::uint64_t number = 0;
    Outcome outcome = Outcome::failed;
    /// What the window was asked for: the frame of the command, within the sizes that it says it can take.
    std::optional<corvid::CGRect> asked;
    /// The window's frame right after; it may not have taken the one that it was asked for yet.
    std::optional<corvid::CGRect> frame;
    /// Whether KWin has given the window the frame without asking it; the window may still ask for another.
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

/// What a call of the script is answered with: commands, or none just to keep it calling.
[[nodiscard]] std::string answer(const std::vector<std::string>& commands);
/// The answer after which the script neither calls nor tells again.
[[nodiscard]] std::string end();

} // namespace platform::kwin::ScriptMessages
