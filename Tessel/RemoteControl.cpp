#include "Tessel/RemoteControl.h"

#include "CorvidKit/Concurrency.h"
#include "Tessel/AccessText.h"
#include "Tessel/HolderText.h"
#include "Tessel/ObstacleText.h"
#include "Tessel/ShortcutText.h"
#include "Tessel/StatusText.h"
#include "Tessel/WindowMover.h"
#include "TesselCore/WindowAction.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace tessel {

namespace {

using platform::ControlAnswer;
using platform::ControlRefusal;
using platform::ControlStatus;
using Kind = ControlRefusal::Kind;

void assertRequestOnMainThread(unsigned line) {
    corvid::assertIsolated({.file = "Tessel/RemoteControl", .line = line});
}

std::unexpected<ControlRefusal> refuse(Kind kind, std::string reason) {
    return std::unexpected(ControlRefusal{.kind = kind, .reason = std::move(reason)});
}

std::string wordOf(AppStatus status) {
    switch (status) {
    case AppStatus::paused:
        return "paused";
    case AppStatus::waitingForPermission:
        return "waitingForPermission";
    case AppStatus::shortcutsTaken:
        return "shortcutsTaken";
    case AppStatus::active:
        return "active";
    }
    std::unreachable();
}

ControlAnswer<void> answerFor(WindowMover::Outcome outcome) {
    switch (outcome) {
    case WindowMover::Outcome::ended:
        return {};
    case WindowMover::Outcome::unanswered:
        return refuse(Kind::failed, "the desktop does not answer; the window may move later");
    case WindowMover::Outcome::refused:
        return refuse(Kind::failed, "the window is gone, or cannot be moved");
    case WindowMover::Outcome::nothingToRestore:
        return refuse(Kind::failed, "nothing to restore: the window does not stand where Tessel has put it");
    }
    std::unreachable();
}

/// Whether a text can be the name of an application: one line with the characters of a file name.
bool isIdentifier(std::string_view text) {
    constexpr auto isUnfit = [](char character) {
        return static_cast<unsigned char>(character) < ' ' || character == '/' || character == '\x7F';
    };
    return !text.empty() && text.size() <= RemoteControl::longestIdentifier && std::ranges::none_of(text, isUnfit);
}

/// Why these cannot be borrowed, as the end of a sentence; empty where nobody has said.
std::string reasons(const AppState& state, const std::set<WindowAction>& actions,
                    const platform::Localization& localization) {
    std::map<platform::LoanObstacle, std::string> keys;
    for (const auto& [action, obstacle] : state.loanObstacles()) {
        if (actions.contains(action)) {
            std::string& list = keys[obstacle];
            list += (list.empty() ? "" : ", ") + shortcutText(action.shortcut());
        }
    }
    std::string text;
    for (const auto& [obstacle, list] : keys) {
        text += "; " + list + ": " + obstacleText(obstacle, localization);
    }
    return text;
}

} // namespace

RemoteControl::RemoteControl(AppState& state, Context context)
    : state(state)
    , context(std::move(context)) {
}

ControlAnswer<void> RemoteControl::open() {
    assertRequestOnMainThread(__LINE__);
    context.open();
    return {};
}

ControlAnswer<ControlStatus> RemoteControl::status() {
    assertRequestOnMainThread(__LINE__);
    ControlStatus report{
        .status = wordOf(state.status()),
        .statusText = statusLine(state.status(), state.failedShortcuts()),
        .isEnabled = state.isEnabled(),
        .isTrusted = state.hasAccessibility(),
        .borrowsShortcuts = state.borrowsShortcuts(),
        .isReplaced = context.application.isReplaced(),
        .version = context.version,
        .backend = context.backend(),
        .shortcuts = {},
        .rules = {},
    };
    if (state.status() == AppStatus::waitingForPermission) {
        report.statusText += ": " + accessText(*state.obstacle());
    }
    const bool isOn = state.isEnabled() && state.hasAccessibility();
    if (const std::string caution = isOn && context.caution ? context.caution() : ""; !caution.empty()) {
        report.statusText += "; " + caution;
    }
    const std::set<WindowAction> borrowed = state.shortcutsOnLoan(platform::HotKeyLoan::made);
    const std::set<WindowAction> lendable = state.shortcutsOnLoan(platform::HotKeyLoan::possible);
    for (const WindowAction action : WindowAction::allCases) {
        const bool isTaken = state.failedShortcuts().contains(action);
        platform::ControlStatus::Shortcut shortcut{.action = std::string(action.rawValue()),
                                                   .keys = shortcutText(action.shortcut()),
                                                   .state = !isOn     ? "off"
                                                            : isTaken ? "taken"
                                                                      : "active"};
        if (const auto holder = state.shortcutHolders().find(action); holder != state.shortcutHolders().end()) {
            shortcut.heldBy = holder->second.heldBy;
            shortcut.purpose = purposeText(holder->second, context.localization);
        }
        shortcut.isBorrowed = borrowed.contains(action);
        shortcut.canBeBorrowed = lendable.contains(action);
        if (const auto obstacle = state.loanObstacles().find(action); obstacle != state.loanObstacles().end()) {
            shortcut.notBorrowable = obstacleWord(obstacle->second);
            shortcut.whyNot = obstacleText(obstacle->second, context.localization);
        }
        report.shortcuts.push_back(std::move(shortcut));
    }
    for (const auto& [identifier, action] : state.rules()) {
        report.rules.emplace(identifier, action.rawValue());
    }
    return report;
}

void RemoteControl::perform(std::string_view action, Answered answered) {
    assertRequestOnMainThread(__LINE__);
    const std::optional<WindowOrder> known = orderFromRawValue(action);
    if (!known) {
        return answered(refuse(Kind::invalid, "there is no such action"));
    }
    if (!state.isEnabled()) {
        return answered(refuse(Kind::paused, "paused: the shortcuts are switched off"));
    }
    if (!state.hasAccessibility()) {
        return answered(refuse(Kind::notTrusted, "waiting for permission: " + accessText(*state.obstacle())));
    }
    const std::optional<platform::AXUIElement> window = WindowMover::focusedWindow();
    if (!window) {
        return answered(refuse(Kind::noWindow, "no window has the focus"));
    }
    state.perform(*known, *window,
                  [answered = std::move(answered)](WindowMover::Outcome outcome) { answered(answerFor(outcome)); });
}

ControlAnswer<void> RemoteControl::setRule(std::string_view bundleIdentifier, std::string_view action) {
    assertRequestOnMainThread(__LINE__);
    constexpr std::string_view entrySuffix = ".desktop";
    if (bundleIdentifier.ends_with(entrySuffix)) {
        bundleIdentifier.remove_suffix(entrySuffix.size());
    }
    if (!isIdentifier(bundleIdentifier)) {
        return refuse(Kind::invalid, "that is not the name of an application");
    }
    const std::optional<WindowAction> known = WindowAction::fromRawValue(action);
    const bool isRule =
        known && std::ranges::find(WindowAction::ruleActions, *known) != WindowAction::ruleActions.end();
    if (!isRule && action != "none") {
        return refuse(Kind::invalid, "a rule is maximize, center or none");
    }
    const std::string identifier(bundleIdentifier);
    if (isRule && state.rules().size() >= mostRules && !state.rules().contains(identifier)) {
        return refuse(Kind::failed, "there are too many rules");
    }
    state.setRule(identifier, known);
    return {};
}

ControlAnswer<void> RemoteControl::setBorrowsShortcuts(bool borrows) {
    assertRequestOnMainThread(__LINE__);
    if (!borrows) {
        state.setBorrowsShortcuts(false);
        return {};
    }
    // Asked once more, it is tried once more: an obstacle may be gone by now.
    const std::set<WindowAction> wanted =
        state.borrowsShortcuts() ? state.failedShortcuts() : state.shortcutsOnLoan(platform::HotKeyLoan::possible);
    if (wanted.empty() && !state.failedShortcuts().empty()) {
        return refuse(Kind::failed, "none of the taken shortcuts can be borrowed on this desktop" +
                                        reasons(state, state.failedShortcuts(), context.localization));
    }
    state.setBorrowsShortcuts(true);
    std::set<WindowAction> missing;
    std::ranges::set_intersection(wanted, state.failedShortcuts(), std::inserter(missing, missing.end()));
    if (!missing.empty()) {
        return refuse(Kind::failed,
                      "not all shortcuts could be borrowed" + reasons(state, missing, context.localization));
    }
    return {};
}

ControlAnswer<void> RemoteControl::quit() {
    assertRequestOnMainThread(__LINE__);
    context.application.terminate();
    return {};
}

} // namespace tessel
