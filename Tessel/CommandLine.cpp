#include "Tessel/CommandLine.h"

#include "TesselCore/WindowOrder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace tessel::CommandLine {

namespace {

constexpr const char* help = R"(Usage: tessel [OPTION]

Moves and resizes the focused window from the keyboard. Runs until --quit, SIGTERM or SIGINT ends it.

  Ctrl+Alt+Left    left half
  Ctrl+Alt+Right   right half
  Ctrl+Alt+C       center
  Ctrl+Alt+Up      maximize
  Ctrl+Alt+D       almost maximize
  Ctrl+Alt+Down    maximize height

Control the Tessel that runs on this display:
  --status         print its status: shortcuts and app rules
  --perform ACTION act on the focused window as a shortcut does: left-half, right-half, center, maximize,
                   almost-maximize or maximize-height; or without a shortcut: top-half, bottom-half, top-left,
                   top-right, bottom-left, bottom-right, first-third, center-third, last-third, first-two-thirds,
                   last-two-thirds, next-display, previous-display or restore
  --rule APPLICATION ACTION
                   set the app rule of an application (its desktop entry's name without ".desktop"): maximize,
                   center or none
  --take-shortcuts use the shortcuts that the desktop holds, while Tessel runs
  --give-back-shortcuts
                   return them to the desktop
  --quit           end it
  --json           answer in JSON; together with one of these, or with --forget

Without an option, a Tessel that runs already shows its window.

Other options:
  --forget         end it, and remove its files from your home: settings, app rules, the start at login and the
                   extension of GNOME Shell; run this before you uninstall it
  --snapshot DIRECTORY
                   draw pictures of the interface into an existing directory, in the user's language
  --help           show this text
  --version        show the version
)";

struct Command {
    std::string_view option;
    Ask::What what;
    /// The names of its arguments in the help text.
    std::vector<std::string_view> arguments;
};

const std::array<Command, 6>& commands() {
    static const std::array<Command, 6> all{{
        {"--status", Ask::What::status, {}},
        {"--perform", Ask::What::perform, {"an action"}},
        {"--rule", Ask::What::rule, {"an application", "an action"}},
        {"--take-shortcuts", Ask::What::takeShortcuts, {}},
        {"--give-back-shortcuts", Ask::What::giveBackShortcuts, {}},
        {"--quit", Ask::What::quit, {}},
    }};
    return all;
}

Refuse refuse(std::string_view what) {
    return {"tessel: " + std::string(what) + "; see tessel --help\n"};
}

/// The raw value of an action's word, which may also have the form "left-half".
std::string rawValueOf(std::string_view word) {
    std::string value;
    bool isStart = false;
    for (const char character : word) {
        if (character == '-') {
            isStart = true;
            continue;
        }
        const bool isLower = character >= 'a' && character <= 'z';
        value += isStart && isLower ? static_cast<char>(character - 'a' + 'A') : character;
        isStart = false;
    }
    return value;
}

/// The reverse: "left-half" for "leftHalf".
std::string wordOf(std::string_view rawValue) {
    std::string word;
    for (const char character : rawValue) {
        const bool isUpper = character >= 'A' && character <= 'Z';
        word += isUpper ? "-" : "";
        word += isUpper ? static_cast<char>(character - 'A' + 'a') : character;
    }
    return word;
}

template <std::size_t count>
std::optional<WindowAction> actionOf(std::string_view word, const std::array<WindowAction, count>& choice) {
    const std::optional<WindowAction> action = WindowAction::fromRawValue(rawValueOf(word));
    return action && std::ranges::find(choice, *action) != choice.end() ? action : std::nullopt;
}

/// The words of actions or placements.
std::string wordsOf(const auto& choice) {
    std::string words;
    for (const auto& one : choice) {
        words += (words.empty() ? "" : ", ") + wordOf(one.rawValue());
    }
    return words;
}

/// Replaces words by raw values.
std::optional<Refuse> settleWords(Ask& ask) {
    if (ask.what == Ask::What::perform) {
        std::string& word = ask.arguments[0];
        const std::string value = rawValueOf(word);
        if (!orderFromRawValue(value)) {
            return Refuse{"tessel: unknown action " + word + "; there are " + wordsOf(WindowAction::allCases) + ", " +
                          wordsOf(WindowPlacement::allCases) + "\n"};
        }
        word = value;
    }
    if (ask.what == Ask::What::rule) {
        std::string& word = ask.arguments[1];
        const std::optional<WindowAction> action = actionOf(word, WindowAction::ruleActions);
        if (!action && word != "none") {
            return Refuse{"tessel: unknown rule " + word + "; there are " + wordsOf(WindowAction::ruleActions) +
                          ", none\n"};
        }
        word = action ? std::string(action->rawValue()) : word;
    }
    return std::nullopt;
}

Request ask(const Command& command, std::span<const std::string> words, bool json) {
    const std::size_t wanted = command.arguments.size();
    for (std::size_t index = 0; index < wanted; ++index) {
        if (index >= words.size() || words[index].empty() || words[index].starts_with('-')) {
            return refuse(std::string(command.option) + " needs " + std::string(command.arguments[index]));
        }
    }
    if (words.size() > wanted) {
        return refuse("unexpected argument " + words[wanted] + " after " + std::string(command.option));
    }
    Ask made{.what = command.what, .arguments = {words.begin(), words.end()}, .json = json};
    if (std::optional<Refuse> refusal = settleWords(made)) {
        return *std::move(refusal);
    }
    return made;
}

} // namespace

Request parse(std::span<const std::string> arguments, const std::string& version) {
    if (arguments.size() < 2) {
        return Run{};
    }
    std::vector<std::string> words(arguments.begin() + 1, arguments.end());
    // `--snapshot` with a directory is handled before this; without one it is ignored.
    if (words.back() == "--snapshot") {
        words.pop_back();
        if (words.empty()) {
            return Run{};
        }
    }
    const bool json = std::erase(words, "--json") > 0;
    if (words.empty()) {
        return refuse("--json needs another option");
    }
    const std::string& option = words.front();
    if (option == "--help") {
        return Print{help};
    }
    if (option == "--version") {
        return Print{"tessel " + version + "\n"};
    }
    if (option == "--forget") {
        return words.size() > 1 ? Request(refuse("unexpected argument " + words[1] + " after " + option))
                                : Request(Forget{.json = json});
    }
    const auto* const command = std::ranges::find(commands(), option, &Command::option);
    if (command == commands().end()) {
        return refuse("unknown option " + option);
    }
    return ask(*command, std::span(words).subspan(1), json);
}

} // namespace tessel::CommandLine
