#include "Tessel/StatusReport.h"

#include <algorithm>
#include <cstddef>

namespace tessel::StatusReport {

namespace {

/// The number of columns of a text: every character but the continuation bytes of UTF-8 begins one. (None of the keys'
/// names is wide.)
std::size_t columns(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

std::string padded(const std::string& text, std::size_t width) {
    const std::size_t taken = columns(text);
    return text + std::string(taken < width ? width - taken : 0, ' ');
}

/// The text after the state of a shortcut that is or was held elsewhere.
std::string holderOf(const platform::ControlStatus::Shortcut& shortcut) {
    if (shortcut.isBorrowed) {
        return ", borrowed" + (shortcut.heldBy.empty() ? std::string() : " from " + shortcut.heldBy);
    }
    if (shortcut.heldBy.empty()) {
        return {};
    }
    return shortcut.purpose.empty() ? " by " + shortcut.heldBy : ": " + shortcut.purpose + " (" + shortcut.heldBy + ")";
}

} // namespace

std::string text(const platform::ControlStatus& status) {
    std::string lines = "Tessel " + status.version + " on " + status.backend + ": " + status.statusText + "\n";
    if (status.isReplaced) {
        lines += "Tessel was updated; what runs is the former one until it is started again\n";
    }
    std::size_t actionWidth = 0;
    std::size_t keysWidth = 0;
    for (const auto& shortcut : status.shortcuts) {
        actionWidth = std::max(actionWidth, columns(shortcut.action));
        keysWidth = std::max(keysWidth, columns(shortcut.keys));
    }
    lines += "\nShortcuts:\n";
    for (const auto& shortcut : status.shortcuts) {
        lines += "  " + padded(shortcut.keys, keysWidth) + "  " + padded(shortcut.action, actionWidth) + "  " +
                 shortcut.state + holderOf(shortcut) + "\n";
        if (!shortcut.whyNot.empty()) {
            lines += std::string(keysWidth + actionWidth + 6, ' ') + shortcut.whyNot + "\n";
        }
    }
    if (std::ranges::any_of(status.shortcuts, &platform::ControlStatus::Shortcut::canBeBorrowed)) {
        lines += "\nTessel can use the taken ones while it runs: tessel --take-shortcuts\n";
    }
    std::size_t identifierWidth = 0;
    for (const auto& [identifier, action] : status.rules) {
        identifierWidth = std::max(identifierWidth, columns(identifier));
    }
    lines += status.rules.empty() ? "\nNo app rules.\n" : "\nApp rules:\n";
    for (const auto& [identifier, action] : status.rules) {
        lines += "  " + padded(identifier, identifierWidth) + "  " + action + "\n";
    }
    return lines;
}

std::string forgottenText(const std::vector<std::string>& removed) {
    std::string lines;
    for (const std::string& path : removed) {
        lines += "removed " + path + "\n";
    }
    return removed.empty() ? "there was nothing to forget\n" : lines;
}

} // namespace tessel::StatusReport
